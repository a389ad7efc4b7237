# One floor of the house is one static library. Its list of sources stands in the
# floor's own CMakeLists.txt; the test "enregistrement" compares the lists with the disk.

function(fenlor_note_sources)
  foreach(source IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
    cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
    set_property(GLOBAL APPEND PROPERTY FENLOR_SOURCES ${source})
  endforeach()
endfunction()

# fenlor_etage(NAME SOURCES ... LINKS ...): LINKS are the floors below, and libraries.
function(fenlor_etage nom)
  cmake_parse_arguments(E "" "" "SOURCES;LINKS" ${ARGN})
  fenlor_note_sources(${E_SOURCES})
  add_library(${nom} STATIC ${E_SOURCES})
  target_include_directories(${nom} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${nom} PUBLIC ${E_LINKS})
  if(FENLOR_SANITIZE)
    # Optimising doubles the time of compilation. It is worth it where the tests spend theirs.
    if(NOT nom MATCHES "^fenlor_(store|core)$")
      target_compile_options(${nom} PRIVATE -O0)
    endif()
    return()
  endif()
  if(CMAKE_UNITY_BUILD)
    # The windows and the tests are compiled several files at a time, these one by one and without precompiled
    # headers, so that each is seen to name its includes.
    set_target_properties(${nom} PROPERTIES UNITY_BUILD OFF)
    return()
  endif()
  if(nom STREQUAL "fenlor_store")
    target_precompile_headers(${nom} PRIVATE <algorithm> <cstring> <functional> <map> <memory> <optional>
      <string> <string_view> <unordered_map> <utility> <vector>)
  else()
    target_precompile_headers(${nom} REUSE_FROM fenlor_store)
  endif()
endfunction()

# fenlor_etage_qt(NAME SOURCES ... LINKS ...): a floor of windows.
function(fenlor_etage_qt nom)
  cmake_parse_arguments(E "" "" "SOURCES;LINKS" ${ARGN})
  fenlor_note_sources(${E_SOURCES})
  add_library(${nom} STATIC ${E_SOURCES})
  set_target_properties(${nom} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_include_directories(${nom} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_compile_definitions(${nom} PUBLIC QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)
  target_link_libraries(${nom} PUBLIC ${E_LINKS} Qt6::Widgets)
  if(FENLOR_SANITIZE)
    target_compile_options(${nom} PRIVATE -O0)
  endif()
  if(nom STREQUAL "fenlor_ui")
    target_precompile_headers(${nom} PRIVATE <functional> <map> <memory> <optional> <string> <string_view>
      <unordered_map> <utility> <vector> <QApplication> <QDialog> <QLabel> <QLineEdit> <QPushButton> <QString>
      <QStringList> <QWidget>)
  else()
    target_precompile_headers(${nom} REUSE_FROM fenlor_ui)
  endif()
endfunction()
