#pragma once

#include <optional>
#include <string>
#include <variant>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::host {

// What the command line asks for.
struct Options {
    std::string directory;  // where the application libraries are
    bool offscreen = false;
    platform::CGSize size{1280, 800};  // of the window's content, in points
    std::optional<double> scale;       // pixels a point; the display's own when empty
    std::string resources;             // empty: the user's own setting stands
    std::string snapshot;              // the PNG to write; empty for none
    std::optional<double> at;          // when, in seconds; empty: as soon as the picture stands
    std::string events;                // the file of pointer events; empty for none
    bool dumpTree = false;
    std::string frames;  // where to write numbered PNGs; empty for nowhere
    double fps = 60;
    double seconds = 1;
    bool help = false;
    bool version = false;

    // Whether the run ends by itself, once it has written what was asked for.
    bool endsByItself() const { return !snapshot.empty() || dumpTree || !frames.empty(); }
};

// The text of --help.
extern const char* const usage;

// What the command line is not allowed to be: one line for the person who typed it.
struct UsageError {
    std::string message;
};

// Reads the command line. Whether folders and files exist is not looked at.
std::variant<Options, UsageError> parseOptions(int argc, char** argv);

}  // namespace orvane::host
