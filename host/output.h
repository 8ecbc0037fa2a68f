#pragma once

#include <functional>
#include <string>

namespace orvane::host {

struct Options;

// The exit code of the program.
enum class ExitCode { Done = 0, NoApplication = 1, CannotDo = 2 };

// Prints one line to standard error, for the person who started the program.
void complain(const std::string& message);

// Writes the output that was asked for: prints the trees, and has `writePNG` write the picture to
// its file.
ExitCode writeOutput(const Options& options,
                     const std::function<bool(const std::string& path)>& writePNG);

}  // namespace orvane::host
