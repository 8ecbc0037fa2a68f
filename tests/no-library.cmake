# no_library: a folder with the libraries that programs link, and none of those that are opened on first
# use. Found by LD_LIBRARY_PATH, the runtime looks for the others there.
set(no_library ${CMAKE_CURRENT_BINARY_DIR}/no-library)
file(MAKE_DIRECTORY ${no_library})
foreach(library liborvane liborvane-gtk)
    set(file ${library}.so.${PROJECT_VERSION_MAJOR})
    file(CREATE_LINK ${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/${file} ${no_library}/${file} SYMBOLIC)
endforeach()
