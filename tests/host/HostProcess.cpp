#include "tests/host/HostProcess.h"

#include <stdexcept>

namespace orvane::tests {

HostProcess::HostProcess(const std::vector<std::string>& arguments, const Settings& settings) {
    const std::unique_ptr<GSubprocessLauncher, Unref> launcher(
        g_subprocess_launcher_new(static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                                                                G_SUBPROCESS_FLAGS_STDERR_PIPE)));
    for (const auto& [name, value] : settings.environment) {
        if (value.empty()) {
            g_subprocess_launcher_unsetenv(launcher.get(), name.c_str());
        } else {
            g_subprocess_launcher_setenv(launcher.get(), name.c_str(), value.c_str(), TRUE);
        }
    }
    if (!settings.directory.empty()) {
        g_subprocess_launcher_set_cwd(launcher.get(), settings.directory.c_str());
    }
    std::vector<const char*> argv{ORVANE_TEST_HOST};
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    argv.push_back(nullptr);
    process_.reset(g_subprocess_launcher_spawnv(launcher.get(), argv.data(), nullptr));
    if (!process_) {
        throw std::runtime_error("can't start " ORVANE_TEST_HOST);
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
    Result result;
    char* output = nullptr;
    char* errors = nullptr;
    if (g_subprocess_communicate_utf8(process_.get(), nullptr, nullptr, &output, &errors,
                                      nullptr) != FALSE) {
        result.output = output;
        result.errors = errors;
        if (g_subprocess_get_if_exited(process_.get()) != FALSE) {
            result.exitCode = g_subprocess_get_exit_status(process_.get());
        }
    }
    g_free(output);
    g_free(errors);
    return result;
}

HostProcess::Result HostProcess::run(const std::vector<std::string>& arguments,
                                     const Settings& settings) {
    return HostProcess(arguments, settings).finish();
}

}  // namespace orvane::tests
