# Compile settings shared by every target of the project: the interface library zu_settings.

add_library(zu_settings INTERFACE)
target_include_directories(zu_settings INTERFACE "${CMAKE_SOURCE_DIR}")
target_compile_options(zu_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Woverloaded-virtual -Wsuggest-override -Wzero-as-null-pointer-constant -Werror
    # g++ 12 sees overlapping copies inside std::string where there are none (its bug 105651).
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(WIN32)
    # No -Wnon-virtual-dtor here: COM interfaces must not have a virtual destructor. The native builds of the
    # portable parts ask for it.
    # Windows 7 is the oldest system that the DLLs are meant for.
    target_compile_definitions(zu_settings INTERFACE
        UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601 WINVER=0x0601
        ZU_VERSION="${PROJECT_VERSION}")
else()
    target_compile_options(zu_settings INTERFACE -fPIC -Wnon-virtual-dtor)
    target_compile_definitions(zu_settings INTERFACE _FILE_OFFSET_BITS=64 ZU_VERSION="${PROJECT_VERSION}")
endif()
if(ZU_SANITIZE)
    target_compile_options(zu_settings INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(zu_settings INTERFACE -fsanitize=address,undefined)
    target_compile_definitions(zu_settings INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(ZU_FUZZ)
    target_compile_options(zu_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

# zu_library(NAME SOURCES... [LINK libs...]): a static library with the project's settings. What links zu_com is code
# for Windows, all else is portable.
function(zu_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES} ${arg_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PUBLIC zu_settings ${arg_LINK})
    if("zu_com" IN_LIST arg_LINK OR name STREQUAL "zu_com")
        zu_precompile(${name} Windows)
    else()
        zu_precompile(${name} Portable)
    endif()
endfunction()
