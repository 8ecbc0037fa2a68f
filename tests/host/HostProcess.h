#pragma once

#include <gio/gio.h>

#include <memory>
#include <string>
#include <vector>

namespace orvane::tests {

// The host program, running as a process.
class HostProcess {
public:
    struct Result {
        int exitCode = -1;  // -1: it was killed
        std::string output;
        std::string errors;
    };

    // `changes` are arguments of the program `env`, which change the environment of the host.
    explicit HostProcess(const std::vector<std::string>& arguments,
                         const std::vector<std::string>& changes = {});

    // Reads the output up to the end of this text. Returns false if the output ends before.
    bool awaitOutput(const std::string& text);
    void sendSignal(int signal);
    // Waits for the end of the process. The output is what awaitOutput has not read.
    Result finish();

private:
    std::unique_ptr<GSubprocess, decltype(&g_object_unref)> process_;
};

}  // namespace orvane::tests
