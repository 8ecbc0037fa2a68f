# orvane_add_application(<name> <source>...)
#
# Builds an application library: an ELF shared library with the name lib<name>.dylib that exports its
# class Main as the data symbol _TtC<length of name><name>4Main. The source file with the class contains
# ORVANE_MAIN_CLASS(type); the macro takes the symbol's name from ORVANE_MAIN_SYMBOL.
function(orvane_add_application name)
    # The name becomes part of a symbol, and CMake counts bytes where the symbol counts characters.
    if(NOT name MATCHES "^[A-Za-z0-9_]+$")
        message(FATAL_ERROR "orvane_add_application: \"${name}\" is not a valid name: an "
                            "application's name has only ASCII letters, digits and underscores")
    endif()
    string(LENGTH "${name}" length)
    add_library(${name} SHARED ${ARGN})
    set_target_properties(${name} PROPERTIES PREFIX "lib" SUFFIX ".dylib" OUTPUT_NAME "${name}")
    target_compile_definitions(${name} PRIVATE "ORVANE_MAIN_SYMBOL=_TtC${length}${name}4Main")
    target_link_libraries(${name} PRIVATE orvane::orvane)
endfunction()
