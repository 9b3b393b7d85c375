# Writes a descriptor whose commands call `program`. They name it between single quotes of the
# shell, within the text of an XML element; the path is made fit for both.
function(configure_descriptor template descriptor program)
  string(REPLACE "'" "'\\''" HOST_FACTS "${program}")
  string(REPLACE "&" "&amp;" HOST_FACTS "${HOST_FACTS}")
  string(REPLACE "<" "&lt;" HOST_FACTS "${HOST_FACTS}")
  configure_file("${template}" "${descriptor}" @ONLY)
endfunction()
