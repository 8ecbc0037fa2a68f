# The targets that every module adds its sources to, and the compile options they share.

add_library(orvane_options INTERFACE)
target_compile_features(orvane_options INTERFACE cxx_std_20)
target_compile_options(orvane_options INTERFACE
    -Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Wshadow -Woverloaded-virtual -Wold-style-cast
    # Some classes inherit a base both directly and through another base.
    -Wno-inaccessible-base
    # g++ 12 reports an overlap inside its own "literal" + std::string that does not exist.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(ORVANE_WERROR)
    target_compile_options(orvane_options INTERFACE -Werror)
endif()
if(ORVANE_SANITIZE)
    target_compile_options(orvane_options INTERFACE
        -fsanitize=${ORVANE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(orvane_options INTERFACE -fsanitize=${ORVANE_SANITIZE})
endif()
target_include_directories(orvane_options INTERFACE ${PROJECT_SOURCE_DIR})
# Relative relocations in a tenth of the space: less to read when a program starts.
include(CheckLinkerFlag)
check_linker_flag(CXX "LINKER:-z,pack-relative-relocs" ORVANE_PACKS_RELOCATIONS)
if(ORVANE_PACKS_RELOCATIONS)
    target_link_options(orvane_options INTERFACE "LINKER:-z,pack-relative-relocs")
endif()

# orvane_precompile(<target> [<header>...]): precompiles headers for a target, if that is wanted.
function(orvane_precompile target)
    if(ORVANE_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE
            <algorithm> <cmath> <functional> <map> <memory> <optional> <span> <string>
            <unordered_map> <utility> <vector> ${ARGN})
    endif()
endfunction()

# The model: trees, geometry, shapes and requests as data. It links the C++ standard library and
# nothing else, and its test programs link only the model: the build enforces the separation.
add_library(orvane_model OBJECT)
target_link_libraries(orvane_model PRIVATE orvane_options)
orvane_precompile(orvane_model)

# The platform modules and the classes that are bound to them.
add_library(orvane_platform OBJECT)
target_link_libraries(orvane_platform PRIVATE orvane_options)
orvane_precompile(orvane_platform)

# liborvane.so. Modules add what they link with orvane_link_platform().
add_library(orvane SHARED)
add_library(orvane::orvane ALIAS orvane)
target_sources(orvane PRIVATE $<TARGET_OBJECTS:orvane_model> $<TARGET_OBJECTS:orvane_platform>)
set_target_properties(orvane PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
                                        LINKER_LANGUAGE CXX)
target_link_libraries(orvane PRIVATE orvane_options)
# Nothing replaces a function of the library from outside: its own calls need no detour.
target_link_options(orvane PRIVATE LINKER:-Bsymbolic-functions)
# A folder of their own: "platform" is a common name.
set(orvane_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/orvane-${PROJECT_VERSION_MAJOR})
target_include_directories(orvane INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${orvane_include_dir}>)
target_compile_features(orvane INTERFACE cxx_std_20)

# The same code as static libraries, so that tests can call what the shared library hides.
add_library(orvane_model_static STATIC $<TARGET_OBJECTS:orvane_model>)
set_target_properties(orvane_model_static PROPERTIES LINKER_LANGUAGE CXX)
target_link_libraries(orvane_model_static PUBLIC orvane_options)
add_library(orvane_static STATIC $<TARGET_OBJECTS:orvane_model> $<TARGET_OBJECTS:orvane_platform>)
set_target_properties(orvane_static PROPERTIES LINKER_LANGUAGE CXX)
target_link_libraries(orvane_static PUBLIC orvane_options)

# orvane_link_platform(<library>...): the platform family compiles against and links these.
function(orvane_link_platform)
    target_link_libraries(orvane_platform PRIVATE ${ARGN})
    target_link_libraries(orvane PRIVATE ${ARGN})
    target_link_libraries(orvane_static PUBLIC ${ARGN})
endfunction()

# orvane_limit_exports(<library> HEADERS <public header>... [USERS <folder>...]): the library exports
# what the headers mark, and for the sources in the folders also what the other headers mark that they include.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
function(orvane_limit_exports library)
    cmake_parse_arguments(EXPORTS "" "" "HEADERS;USERS" ${ARGN})
    set(map ${PROJECT_BINARY_DIR}/${library}.map)
    list(LENGTH EXPORTS_USERS user_count)
    list(TRANSFORM EXPORTS_HEADERS PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE headers)
    list(TRANSFORM EXPORTS_USERS PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE users)
    list(TRANSFORM users APPEND /*.*)
    if(users)
        file(GLOB users CONFIGURE_DEPENDS ${users})
    endif()
    # The library is linked again only if the script's result has changed.
    set(script ${PROJECT_SOURCE_DIR}/cmake/writeExports.py)
    add_custom_command(OUTPUT ${map}.checked BYPRODUCTS ${map}
        COMMAND Python3::Interpreter ${script} ${PROJECT_SOURCE_DIR} ${PROJECT_VERSION_MAJOR} ${map}
                ${user_count} ${EXPORTS_USERS} ${EXPORTS_HEADERS}
        COMMAND ${CMAKE_COMMAND} -E touch ${map}.checked
        DEPENDS ${script} ${headers} ${users} VERBATIM)
    add_custom_target(${library}_exports DEPENDS ${map}.checked)
    add_dependencies(${library} ${library}_exports)
    set_target_properties(${library} PROPERTIES LINK_DEPENDS ${map})
    target_link_options(${library} PRIVATE LINKER:--version-script=${map})
endfunction()

# orvane_add_opened_library(<name> SOURCES <source>... [LIBRARIES <library>...]): the target orvane_<name>,
# which is liborvane-<name>.so. Nothing links it: the runtime opens it when it is needed first. It
# exports what exports.map in the current folder names.
function(orvane_add_opened_library name)
    cmake_parse_arguments(OPENED "" "" "SOURCES;LIBRARIES" ${ARGN})
    set(exports ${CMAKE_CURRENT_SOURCE_DIR}/exports.map)
    add_library(orvane_${name} SHARED ${OPENED_SOURCES})
    set_target_properties(orvane_${name} PROPERTIES
        OUTPUT_NAME orvane-${name} LINK_DEPENDS ${exports}
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    target_link_libraries(orvane_${name} PRIVATE orvane::orvane orvane_options ${OPENED_LIBRARIES})
    target_link_options(orvane_${name} PRIVATE LINKER:--version-script=${exports})
endfunction()
