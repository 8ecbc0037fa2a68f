#include "host/output.h"

#include <iostream>

#include "host/Options.h"
#include "host/TreeDump.h"
#include "orvane/display/Display.h"

namespace orvane::host {

void complain(const std::string& message) {
    std::cerr << "orvane-host: " << message << std::endl;
}

ExitCode writeOutput(const Options& options,
                     const std::function<bool(const std::string& path)>& writePNG) {
    if (options.dumpTree) {
        dumpTree(std::cout, *display::Display::instance());
        std::cout.flush();
    }
    if (!options.snapshot.empty() && !writePNG(options.snapshot)) {
        complain("cannot write " + options.snapshot);
        return ExitCode::CannotDo;
    }
    return ExitCode::Done;
}

}  // namespace orvane::host
