# Type libraries: compiling idl/ with widl, and putting type libraries into DLLs.

find_program(ZU_WIDL widl REQUIRED DOC "Interface compiler (Debian: wine64-tools)")
find_path(ZU_WIDL_IDL_DIR oaidl.idl PATHS /usr/include/wine/wine/windows /usr/include/wine/windows
    NO_CMAKE_FIND_ROOT_PATH REQUIRED DOC "Folder of the system's own IDL files (Debian: libwine-dev)")
find_path(ZU_WIDL_TLB_DIR stdole2.tlb
    PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows /usr/lib/wine/x86_64-windows
    NO_CMAKE_FIND_ROOT_PATH REQUIRED DOC "Folder of the system's own type libraries (Debian: libwine)")

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(ZU_WIDL_FLAGS --win64)
else()
    set(ZU_WIDL_FLAGS --win32)
endif()
set(ZU_IDL_HEADER_ROOT "${CMAKE_BINARY_DIR}/generated")
# Cached: the folders of the DLLs use it too, wherever this file was included first.
set(ZU_TYPELIB_DIR "${CMAKE_BINARY_DIR}/typelib" CACHE INTERNAL "Folder of the built type libraries")
list(APPEND ZU_WIDL_FLAGS -I "${ZU_WIDL_IDL_DIR}" -I "${CMAKE_SOURCE_DIR}/idl"
    -L "${ZU_WIDL_TLB_DIR}" -L "${ZU_TYPELIB_DIR}")

# zu_embed_typelib(TARGET LIBRARY...): the type libraries become the resources 1, 2, ... of the DLL.
function(zu_embed_typelib target)
    set(script "")
    set(files "")
    set(number 1)
    foreach(library IN LISTS ARGN)
        set(file "${ZU_TYPELIB_DIR}/${library}.tlb")
        string(APPEND script "${number} TYPELIB \"${file}\"\n")
        list(APPEND files "${file}")
        math(EXPR number "${number} + 1")
    endforeach()
    set(resource "${CMAKE_CURRENT_BINARY_DIR}/${target}-typelib.rc")
    file(GENERATE OUTPUT "${resource}" CONTENT "${script}")
    set_source_files_properties("${resource}" PROPERTIES OBJECT_DEPENDS "${files}" GENERATED TRUE)
    target_sources(${target} PRIVATE "${resource}")
    target_link_libraries(${target} PRIVATE zu_idl)
    add_dependencies(${target} zu_idl_files)
endfunction()

# zu_com_server(TARGET LIBRARY...): makes a shared library a COM server: the entry points are exported
# undecorated, the type libraries embedded, and the file is named after the target alone.
function(zu_com_server target)
    target_sources(${target} PRIVATE "${CMAKE_SOURCE_DIR}/com/server.def")
    target_link_libraries(${target} PRIVATE zu_settings zu_com)
    set_target_properties(${target} PROPERTIES PREFIX "")
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
        # The entry points are stdcall; the linker takes the decorated names for the plain ones without a word.
        target_link_options(${target} PRIVATE -Wl,--enable-stdcall-fixup)
    endif()
    zu_embed_typelib(${target} ${ARGN})
endfunction()
