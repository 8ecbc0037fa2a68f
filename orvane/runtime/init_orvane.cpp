#include "orvane/runtime/init_orvane.h"

#include <easylogging++.h>

void init_orvane() {
    el::Configurations configurations;
    configurations.setToDefault();
    configurations.set(el::Level::Global, el::ConfigurationType::ToFile, "false");
    configurations.set(el::Level::Global, el::ConfigurationType::Format,
                       "%datetime{%H:%m:%s,%g} %level [%logger] : %msg");
    configurations.set(el::Level::Debug, el::ConfigurationType::Format,
                       "%datetime{%H:%m:%s,%g} %level [%logger] [%func] : %msg");
    el::Loggers::reconfigureLogger("default", configurations);
    el::Loggers::addFlag(el::LoggingFlag::ColoredTerminalOutput);
}
