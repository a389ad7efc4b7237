cmake_policy(VERSION 3.25)
# cmake -DRACINE=dir -DLISTE=sources.txt -P enregistrement.cmake
# Fails when a source of src/, or a test, stands on disk and in no list.
file(STRINGS "${LISTE}" connues)
file(GLOB_RECURSE presentes RELATIVE "${RACINE}" "${RACINE}/src/*.cpp" "${RACINE}/tests/*_test.cpp")
set(oubliees ${presentes})
list(REMOVE_ITEM oubliees ${connues})
if(oubliees)
  list(JOIN oubliees "\n  " texte)
  message(FATAL_ERROR "In no CMakeLists.txt:\n  ${texte}")
endif()
list(LENGTH presentes nombre)
message(STATUS "${nombre} sources, all of them in a list")
