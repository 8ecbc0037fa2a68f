#pragma once

#include <gio/gio.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace orvane::tests {

// The host program, run as a process.
class HostProcess {
public:
    struct Settings {
        std::map<std::string, std::string> environment;  // an empty value takes the variable away
        std::string directory;                           // to run in; empty for the test's own
    };
    struct Result {
        int exitCode = -1;  // -1: it did not exit by itself
        std::string output;
        std::string errors;
    };

    explicit HostProcess(const std::vector<std::string>& arguments, const Settings& settings = {});

    // Reads the output up to and with this text. False when it ends before that.
    bool awaitOutput(const std::string& text);
    void sendSignal(int signal);
    // Waits for the end. The output is what awaitOutput has not read.
    Result finish();

    // From start to end.
    static Result run(const std::vector<std::string>& arguments, const Settings& settings = {});

private:
    struct Unref {
        void operator()(void* object) const { g_object_unref(object); }
    };
    std::unique_ptr<GSubprocess, Unref> process_;
};

}  // namespace orvane::tests
