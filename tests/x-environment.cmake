# The environment of tests with a window: the pixels do not depend on the machine's graphics hardware,
# and accessibility can be queried without a bus.
set(with_x_server ${PROJECT_SOURCE_DIR}/tests/with-x-server)
set(x_environment
    GDK_BACKEND=x11
    GDK_DEBUG=gl-disable
    GSK_RENDERER=cairo
    GTK_A11Y=test
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0")
