#pragma once

#include <gio/gio.h>

#include <memory>
#include <string>
#include <vector>

namespace orvane::tests {

// The host program, run as a process.
class HostProcess {
public:
    struct Result {
        int exitCode = -1;  // -1: it did not exit by itself
        std::string output;
        std::string errors;
    };

    // `changes` to its surroundings are written as the program env takes them.
    explicit HostProcess(const std::vector<std::string>& arguments,
                         const std::vector<std::string>& changes = {});

    // Reads the output up to and with this text. False when it ends before that.
    bool awaitOutput(const std::string& text);
    void sendSignal(int signal);
    // Waits for the end. The output is what awaitOutput has not read.
    Result finish();

private:
    std::unique_ptr<GSubprocess, decltype(&g_object_unref)> process_;
};

}  // namespace orvane::tests
