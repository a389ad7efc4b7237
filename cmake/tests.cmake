include(GoogleTest)

# fenlor_tests(NAME SOURCES ... LINKS ... [ETIQUETTE label]): one binary of GoogleTest cases.
function(fenlor_tests nom)
  cmake_parse_arguments(T "" "ETIQUETTE" "SOURCES;LINKS" ${ARGN})
  fenlor_note_sources(${T_SOURCES})
  add_executable(${nom} ${T_SOURCES})
  target_link_libraries(${nom} PRIVATE tests_outils ${T_LINKS} GTest::gtest_main)
  target_precompile_headers(${nom} REUSE_FROM tests_outils)
  gtest_discover_tests(${nom} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 600 LABELS "${T_ETIQUETTE}")
endfunction()

# fenlor_tests_ui(...): the same with windows; the main of these tests is their own.
function(fenlor_tests_ui nom)
  cmake_parse_arguments(T "" "" "SOURCES;LINKS" ${ARGN})
  fenlor_note_sources(${T_SOURCES})
  add_executable(${nom} ${T_SOURCES})
  set_target_properties(${nom} PROPERTIES AUTOMOC ON)
  target_link_libraries(${nom} PRIVATE tests_ui_outils ${T_LINKS} GTest::gtest)
  target_precompile_headers(${nom} REUSE_FROM tests_ui_outils)
  gtest_discover_tests(${nom} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 600)
endfunction()
