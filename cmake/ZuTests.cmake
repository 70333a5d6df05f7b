# zu_test(NAME label SOURCES... LINK libs...): a GoogleTest program registered with CTest as one suite.
# Label unit: portable tests, built natively too; other labels: tests of code for Windows.
# Windows builds run it under Wine through the project's own launcher (tools/wine-run), which supplies the prefix.
# Each suite writes its results as XML to <build>/test-results, from which `./zu test` counts.

if(NOT TARGET gtest)
    add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL)
endif()
set(ZU_GTEST gtest gmock)
foreach(library gtest gmock gtest_main)
    target_compile_options(${library} PRIVATE -O0)
endforeach()
if(ZU_SANITIZE)
    target_compile_options(gtest PRIVATE -fsanitize=address,undefined)
    target_link_options(gtest PUBLIC -fsanitize=address,undefined)
endif()
set(ZU_TEST_LAUNCHER "")
if(WIN32)
    set(ZU_TEST_LAUNCHER "${CMAKE_SOURCE_DIR}/tools/wine-run")
endif()

function(zu_test name label)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE zu_settings ${arg_LINK} ${ZU_GTEST} gtest_main)
    # What is tested is optimised; the tests themselves are not, which compiles them three times as fast.
    target_compile_options(${name} PRIVATE -O0)
    if(label STREQUAL "unit")
        zu_precompile(${name} PortableTest)
    else()
        zu_precompile(${name} WindowsTest)
    endif()
    if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 4)
        # Wine here is 64-bit only, so these programs could not run; x86 builds the product itself, and what is
        # checked by compiling.
        set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
        return()
    endif()
    # A path without a drive would be taken as one below the current folder there.
    set(drive "")
    if(WIN32)
        set(drive "Z:")
    endif()
    add_test(NAME ${name}
        COMMAND ${ZU_TEST_LAUNCHER} $<TARGET_FILE:${name}>
                --gtest_output=xml:${drive}${CMAKE_BINARY_DIR}/test-results/${name}.xml
        WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")
    set_tests_properties(${name} PROPERTIES LABELS "${label}" TIMEOUT 600)
endfunction()

# zu_fuzz(NAME SOURCES... LINK libs... CORPUS folder [RUNS n]): a libFuzzer program, built only with the preset native-fuzz.
# CTest runs it for a fixed number of rounds from a fixed seed over the kept corpus; `./zu fuzz` runs it for a time.
function(zu_fuzz name)
    if(NOT ZU_FUZZ)
        return()
    endif()
    cmake_parse_arguments(arg "" "CORPUS;RUNS" "SOURCES;LINK" ${ARGN})
    if(NOT arg_RUNS)
        set(arg_RUNS 20000)
    endif()
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE zu_settings ${arg_LINK})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    get_filename_component(corpus "${arg_CORPUS}" ABSOLUTE)
    add_test(NAME ${name}
        COMMAND "${CMAKE_SOURCE_DIR}/tools/fuzz-target" $<TARGET_FILE:${name}> "${corpus}" -runs=${arg_RUNS}
        WORKING_DIRECTORY "${CMAKE_BINARY_DIR}")
    set_tests_properties(${name} PROPERTIES LABELS fuzz TIMEOUT 600)
endfunction()
