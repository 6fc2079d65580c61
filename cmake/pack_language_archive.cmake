# Packs the language sources into the archive that becomes a resource of the program: first every language
# file, then, behind a line that holds a form feed only, the list of the first run.
#
#   cmake -DOUTPUT=archive -DLANGUAGES="a.txt;b.txt" -DFIRST_RUN_LIST=list.ini -P pack_language_archive.cmake
string(ASCII 12 form_feed)
set(archive "")
foreach(source IN LISTS LANGUAGES)
  file(READ "${source}" text)
  string(APPEND archive "${text}\n")
endforeach()
file(READ "${FIRST_RUN_LIST}" text)
file(WRITE "${OUTPUT}" "${archive}${form_feed}\n${text}")
