# Writes a descriptor whose commands call these programs. They name them between single quotes of the
# shell, within the text of an XML element; the paths are made fit for both. The template names the
# grammar for editors as seen from where it is itself, and the descriptor in the folder `schemas`.
function(configure_descriptor template descriptor host_facts tandril_result schemas)
  quote_for_template(HOST_FACTS "${host_facts}")
  quote_for_template(TANDRIL_RESULT "${tandril_result}")
  file(READ "${template}" text)
  string(REPLACE "href=\"../../../schemas/" "href=\"${schemas}/" text "${text}")
  file(CONFIGURE OUTPUT "${descriptor}" CONTENT "${text}" @ONLY)
endfunction()

function(quote_for_template variable path)
  string(REPLACE "'" "'\\''" path "${path}")
  string(REPLACE "&" "&amp;" path "${path}")
  string(REPLACE "<" "&lt;" path "${path}")
  set(${variable}
      "${path}"
      PARENT_SCOPE)
endfunction()
