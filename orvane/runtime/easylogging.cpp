// The logging library is distributed as source. It is compiled into this library with hidden
// symbols, so that an application may link a copy of its own.
#include <easylogging++.cc>
