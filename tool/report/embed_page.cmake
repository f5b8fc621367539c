# Writes the files of the report's page into a C++ source, see report_files.h:
#
#     cmake -DOUTPUT=FILE -DFOLDER=tool/report/page -DSCRIPTS=a.js,b.js
#       [-DLIBRARY=FILE -DLICENCES=FILE,FILE] -P embed_page.cmake

set(code "#include \"tool/report/report_files.h\"\n\nnamespace tool::report {\n\nnamespace {\n\n")
set(views "")

# Adds a constant with the bytes in the variable `hex`.
macro(add name)
  string(REGEX REPLACE "(................................)" "\\1\n" lines "${hex}")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," lines "${lines}")
  string(LENGTH "${hex}" digits)
  math(EXPR size "${digits} / 2")
  string(APPEND code "const unsigned char k${name}Bytes[] = {\n${lines}\n0};\n\n")
  string(APPEND views
    "const std::string_view k${name}(reinterpret_cast<const char*>(k${name}Bytes), ${size});\n")
endmacro()

file(READ ${FOLDER}/page.html hex HEX)
add(Page)
file(READ ${FOLDER}/page.css hex HEX)
add(Style)

# One script: a name of one file is known in the others, and to nobody else.
string(REPLACE "," ";" scripts "${SCRIPTS}")
string(HEX "'use strict';\n(() => {\n" hex)
foreach(script IN LISTS scripts)
  file(READ ${FOLDER}/${script} text HEX)
  string(APPEND hex "${text}")
endforeach()
string(HEX "})();\n" text)
string(APPEND hex "${text}")
add(Script)

set(hex "")
if(LIBRARY)
  file(READ ${LIBRARY} hex HEX)
endif()
add(Library)

set(hex "")
string(REPLACE "," ";" licences "${LICENCES}")
foreach(licence IN LISTS licences)
  file(READ ${licence} text)
  string(REPLACE "&" "&amp;" text "${text}")
  string(REPLACE "<" "&lt;" text "${text}")
  string(HEX "${text}\n" text)
  string(APPEND hex "${text}")
endforeach()
add(Licence)

file(WRITE ${OUTPUT} "${code}} // namespace\n\n${views}\n} // namespace tool::report\n")
