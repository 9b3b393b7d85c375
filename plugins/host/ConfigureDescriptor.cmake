# Writes a descriptor whose commands call `program`. They name it between single quotes of the
# shell, within the text of an XML element; the path is made fit for both. The template names the
# grammar for editors as seen from where it is itself, and the descriptor in the folder `schemas`.
function(configure_descriptor template descriptor program schemas)
  string(REPLACE "'" "'\\''" HOST_FACTS "${program}")
  string(REPLACE "&" "&amp;" HOST_FACTS "${HOST_FACTS}")
  string(REPLACE "<" "&lt;" HOST_FACTS "${HOST_FACTS}")
  file(READ "${template}" text)
  string(REPLACE "href=\"../../../schemas/" "href=\"${schemas}/" text "${text}")
  file(CONFIGURE OUTPUT "${descriptor}" CONTENT "${text}" @ONLY)
endfunction()
