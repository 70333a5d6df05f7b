# zu_precompile(TARGET KIND): the target's sources see the headers of cmake/precompiled/KIND.h as if they included them.
# Each kind is compiled once, by the first target that asks for it, and shared by all.
#
# The standard library, windows.h and GoogleTest are half of what a source takes to compile. Lint reads every source
# of the product without, so that one that forgets an include does not go unnoticed.

option(ZU_PRECOMPILE "Use precompiled headers" ON)

function(zu_precompile target kind)
    # A compiler cache works on plain sources only.
    if(NOT ZU_PRECOMPILE OR CMAKE_CXX_COMPILER_LAUNCHER)
        return()
    endif()
    set(carrier "zu_precompiled_${kind}")
    if(NOT TARGET ${carrier})
        add_library(${carrier} OBJECT "${CMAKE_SOURCE_DIR}/cmake/precompiled/Precompiled.cpp")
        target_link_libraries(${carrier} PRIVATE zu_settings)
        if(kind MATCHES "Test$")
            target_link_libraries(${carrier} PRIVATE ${ZU_GTEST})
            target_compile_options(${carrier} PRIVATE -O0)
        endif()
        target_precompile_headers(${carrier} PRIVATE "${CMAKE_SOURCE_DIR}/cmake/precompiled/${kind}.h")
    endif()
    target_precompile_headers(${target} REUSE_FROM ${carrier})
    # g++ 12 takes what it inlines from a precompiled std::string for code of ours, and warns of overflows that its
    # own library rules out. Builds without precompiled headers, such as those with a compiler cache, keep these warnings.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overflow;-Wno-stringop-overread;-Wno-array-bounds>)
endfunction()
