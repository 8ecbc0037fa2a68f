#include "tests/host/HostProcess.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace orvane::tests {

HostProcess::HostProcess(const std::vector<std::string>& arguments,
                         const std::vector<std::string>& changes)
    : process_(nullptr, &g_object_unref) {
    std::vector<const char*> command{"env"};
    std::ranges::transform(changes, std::back_inserter(command), &std::string::c_str);
    command.push_back(ORVANE_TEST_HOST);
    std::ranges::transform(arguments, std::back_inserter(command), &std::string::c_str);
    command.push_back(nullptr);
    process_.reset(g_subprocess_newv(command.data(),
                                     static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                                                                   G_SUBPROCESS_FLAGS_STDERR_PIPE),
                                     nullptr));
    if (!process_) {
        throw std::runtime_error("cannot start " ORVANE_TEST_HOST);
    }
}

bool HostProcess::awaitOutput(const std::string& text) {
    GInputStream* const stream = g_subprocess_get_stdout_pipe(process_.get());
    std::string read;
    while (!read.ends_with(text)) {
        char byte = 0;
        if (g_input_stream_read(stream, &byte, 1, nullptr, nullptr) != 1) {
            return false;
        }
        read += byte;
    }
    return true;
}

void HostProcess::sendSignal(int signal) {
    g_subprocess_send_signal(process_.get(), signal);
}

HostProcess::Result HostProcess::finish() {
    char* output = nullptr;
    char* errors = nullptr;
    if (!g_subprocess_communicate_utf8(process_.get(), nullptr, nullptr, &output, &errors,
                                       nullptr)) {
        throw std::runtime_error("cannot read the output of " ORVANE_TEST_HOST);
    }
    Result result{-1, output, errors};
    if (g_subprocess_get_if_exited(process_.get()) != FALSE) {
        result.exitCode = g_subprocess_get_exit_status(process_.get());
    }
    g_free(output);
    g_free(errors);
    return result;
}

}  // namespace orvane::tests
