#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "orvane/services/families.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::host {

// The parsed command line.
struct Options {
    std::string directory;  // where the application libraries are
    bool offscreen = false;
    platform::CGSize size{1280, 800};  // of the window's content, in points
    std::optional<double> scale;       // pixels per point; empty: the display's own
    std::string title = "Orvane";      // of the window
    std::string windowState;           // the file for the window's place and size; empty: none
    std::string message;               // the file with a text to show instead; empty: none
    bool watch = false;
    bool inspects = false;
    std::string inspected;  // what the inspector searches for at first; empty: nothing
    std::vector<services::Family> denied;  // what applications may not use
    std::string resources;                 // empty: the user's own setting applies
    std::string snapshot;                  // the PNG file to write; empty: none
    std::optional<double> at;              // seconds; empty: when nothing is left to paint
    std::string events;                    // the file of pointer events; empty: none
    bool dumpTree = false;
    std::string trace;   // the file for the trace of the run; empty: none
    std::string frames;  // the directory for numbered PNGs; empty: none
    double fps = 60;
    double seconds = 1;
    bool help = false;
    bool version = false;

    // Whether the run ends when it has written what was asked for.
    bool endsAfterOutput() const { return !snapshot.empty() || dumpTree || !frames.empty(); }
};

// The text of --help.
extern const char* const kUsage;

// A mistake in the command line, as one line for the person who typed it.
struct UsageError {
    std::string message;
};

// Parses the command line. Does not check whether directories and files exist.
std::variant<Options, UsageError> parseOptions(int argc, char** argv);

}  // namespace orvane::host
