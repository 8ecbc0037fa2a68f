// The logging library is shipped as source. Here it becomes a hidden part of this library, so that
// an application may bring its own.
#include <easylogging++.cc>
