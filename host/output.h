#pragma once

#include <functional>
#include <string>

namespace orvane::host {

struct Options;

// How a run ends: the program's exit code.
enum class ExitCode { Done = 0, NoApplication = 1, CannotDo = 2 };

// One line on standard error, for the person who started the program.
void complain(const std::string& message);

// Writes what was asked for of the present moment: the trees to standard output, the picture, by
// `writePNG`, to its file.
ExitCode writeOutput(const Options& options,
                     const std::function<bool(const std::string& path)>& writePNG);

}  // namespace orvane::host
