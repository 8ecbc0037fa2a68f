# What tests with a window run in: the same pixels on every machine, whatever its graphics hardware,
# and accessibility that can be asked though no bus runs.
set(with_x_server ${PROJECT_SOURCE_DIR}/tests/with-x-server)
set(x_environment
    GDK_BACKEND=x11
    GDK_DEBUG=gl-disable
    GSK_RENDERER=cairo
    GTK_A11Y=test
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0")
