if(VEILKEEP_TESTS)
    enable_testing()
    find_package(GTest REQUIRED)
    find_package(Python3 REQUIRED COMPONENTS Interpreter)
    include(GoogleTest)
endif()

# veilkeep_add_test(NAME layer SOURCES a.cpp… [LIBRARIES target…] [TIMEOUT seconds] [COST seconds])
# One program of GoogleTest cases; each case is a test of its own for CTest, which begins with those that cost
# most.
function(veilkeep_add_test)
    cmake_parse_arguments(ARG "" "NAME;TIMEOUT;COST" "SOURCES;LIBRARIES" ${ARGN})
    set(properties)
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    if(ARG_COST)
        list(APPEND properties COST ${ARG_COST})
    endif()
    add_executable(${ARG_NAME} ${ARG_SOURCES})
    target_link_libraries(${ARG_NAME} PRIVATE veilkeep_settings test_support ${ARG_LIBRARIES} GTest::gtest
                                              GTest::gtest_main)
    gtest_discover_tests(${ARG_NAME} TEST_PREFIX "${ARG_NAME}." PROPERTIES TIMEOUT ${ARG_TIMEOUT} ${properties}
                         DISCOVERY_TIMEOUT 60)
endfunction()
