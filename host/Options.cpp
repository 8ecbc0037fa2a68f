#include "host/Options.h"

#include <getopt.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "host/parseNumber.h"

namespace orvane::host {

const char* const kUsage =
    R"(Usage: orvane-host [options] DIRECTORY
Starts every application library in DIRECTORY and shows what it displays.

  --offscreen        render in memory and open no window. Chosen automatically when there is no
                     display; the picture is then written to orvane.png unless another option
                     says what to write
  --size WxH         size of the window's content in points (1280x800)
  --scale S          pixels per point (the display's own; 1 off-screen)
  --title TEXT       title of the window (Orvane)
  --inspect[=TEXT]   show the objects, the layers and the frames of the applications in a second
                     window, and choose the first object that TEXT finds. With --snapshot, write
                     its picture to a second file, whose name ends in -inspector
  --watch            start the applications again when a library in DIRECTORY has been built
  --window-state FILE  open the window where and as large as FILE says, and keep FILE up to date
  --message FILE     show the text in FILE instead of the applications
  --deny FAMILY,...  refuse the applications families of services: contacts, geolocation, camera,
                     map, web
  --resources DIR    the resource folder, for this run only
  --snapshot FILE    write what is on screen to a PNG file, then exit
  --dump-tree        print the object tree and the layer tree, then exit
  --at SECONDS       when to write and print (as soon as the application's main has returned, all
                     events are played and nothing is left to paint). Off-screen, animations are
                     shown as they are at exactly this time
  --events FILE      play pointer, scroll and key events; a line is SECONDS down|move|up X Y,
                     SECONDS scroll X Y DX DY, SECONDS key NAME [ctrl+shift+alt],
                     SECONDS text STRING, SECONDS close and others
  --trace FILE       write what the run does, and when, in the Chrome trace format
  --frames DIR       off-screen: write every frame of an animation as a numbered PNG, then exit
  --fps N            frames per second (60)
  --seconds S        how much time the frames cover (1)
  --help             print this text
  --version          print the version

The exit code is 0 if the host did what was asked, 1 if no application could be started, and 2 if
what was asked cannot be done.
)";

namespace {

// The most pixels of a picture's side: the canvas library counts in 15 bits.
constexpr double kLongestSide = 32767;

enum OptionCode {
    Offscreen = 1,
    Size,
    Scale,
    Title,
    Inspect,
    Watch,
    WindowState,
    Message,
    Deny,
    Resources,
    Snapshot,
    At,
    Events,
    DumpTree,
    Trace,
    Frames,
    Fps,
    Seconds,
    Help,
    Version,
};

constexpr std::array<option, 21> kLongOptions{{
    {"offscreen", no_argument, nullptr, Offscreen},
    {"size", required_argument, nullptr, Size},
    {"scale", required_argument, nullptr, Scale},
    {"title", required_argument, nullptr, Title},
    {"inspect", optional_argument, nullptr, Inspect},
    {"watch", no_argument, nullptr, Watch},
    {"window-state", required_argument, nullptr, WindowState},
    {"message", required_argument, nullptr, Message},
    {"deny", required_argument, nullptr, Deny},
    {"resources", required_argument, nullptr, Resources},
    {"snapshot", required_argument, nullptr, Snapshot},
    {"at", required_argument, nullptr, At},
    {"events", required_argument, nullptr, Events},
    {"dump-tree", no_argument, nullptr, DumpTree},
    {"trace", required_argument, nullptr, Trace},
    {"frames", required_argument, nullptr, Frames},
    {"fps", required_argument, nullptr, Fps},
    {"seconds", required_argument, nullptr, Seconds},
    {"help", no_argument, nullptr, Help},
    {"version", no_argument, nullptr, Version},
    {nullptr, 0, nullptr, 0},
}};

std::optional<platform::CGSize> parseSize(std::string_view text) {
    const auto cross = text.find('x');
    if (cross == std::string_view::npos) {
        return {};
    }
    const auto width = parseNumber(text.substr(0, cross));
    const auto height = parseNumber(text.substr(cross + 1));
    // The size of a window is in whole points.
    const auto isSide = [](const std::optional<double>& side) {
        return side && *side >= 1 && *side <= kLongestSide && *side == std::floor(*side);
    };
    if (!isSide(width) || !isSide(height)) {
        return {};
    }
    return platform::CGSize{*width, *height};
}

std::optional<double> parsePositive(std::string_view text) {
    const auto number = parseNumber(text);
    return number && *number > 0 ? number : std::nullopt;
}

// Returns false if a name is unknown.
bool storeFamilies(Options& options, std::string_view names) {
    for (std::size_t comma = 0; comma != std::string_view::npos;) {
        comma = names.find(',');
        const auto family = services::familyNamed(names.substr(0, comma));
        if (!family) {
            return false;
        }
        options.denied.push_back(*family);
        names.remove_prefix(std::min(comma, names.size() - 1) + 1);
    }
    return true;
}

// Stores the value of an option. Returns what is wrong with the value; empty if nothing is.
std::string store(Options& options, int code, const char* value) {
    switch (code) {
        case Offscreen:
            options.offscreen = true;
            break;
        case Size: {
            const auto size = parseSize(value);
            if (!size) {
                return "--size needs WxH in whole points, such as 1280x800";
            }
            options.size = *size;
            break;
        }
        case Scale:
            options.scale = parsePositive(value);
            if (!options.scale) {
                return "--scale needs a number above 0";
            }
            break;
        case Title:
            options.title = value;
            break;
        case Inspect:
            options.inspects = true;
            options.inspected = value != nullptr ? value : "";
            break;
        case Watch:
            options.watch = true;
            break;
        case WindowState:
            options.windowState = value;
            break;
        case Message:
            options.message = value;
            break;
        case Deny:
            if (!storeFamilies(options, value)) {
                return "--deny needs families (" + services::familyNames() + "), joined by commas";
            }
            break;
        case Resources:
            options.resources = value;
            break;
        case Snapshot:
            options.snapshot = value;
            break;
        case At:
            options.at = parseNumber(value);
            if (!options.at || *options.at < 0) {
                return "--at needs a number of seconds, 0 or more";
            }
            break;
        case Events:
            options.events = value;
            break;
        case DumpTree:
            options.dumpTree = true;
            break;
        case Trace:
            options.trace = value;
            break;
        case Frames:
            options.frames = value;
            break;
        case Fps:
        case Seconds: {
            const auto number = parsePositive(value);
            if (!number) {
                return std::string(code == Fps ? "--fps" : "--seconds") + " needs a number above 0";
            }
            (code == Fps ? options.fps : options.seconds) = *number;
            break;
        }
        case Help:
            options.help = true;
            break;
        case Version:
            options.version = true;
            break;
        default:
            break;
    }
    return {};
}

// Returns which options, each valid on its own, contradict one another; empty if none do.
std::string findContradiction(const Options& options) {
    const double scale = options.scale.value_or(1);
    if (options.size.width * scale > kLongestSide || options.size.height * scale > kLongestSide) {
        return "--size times --scale is more than 32767 pixels";
    }
    if (!options.frames.empty() && (!options.snapshot.empty() || options.at)) {
        return "--frames cannot be combined with --snapshot or --at";
    }
    if (options.watch && (options.offscreen || options.endsAfterOutput())) {
        return "--watch needs a window: it cannot be combined with --offscreen or with options "
               "that "
               "write what is shown";
    }
    if (options.fps * options.seconds > 1e6) {
        return "--fps times --seconds is more than a million frames";
    }
    return {};
}

}  // namespace

std::variant<Options, UsageError> parseOptions(int argc, char** argv) {
    Options options;
    opterr = 0;  // Replace getopt's messages by ours, which name the option as it was typed.
    optind = 1;
    // The leading colon distinguishes a missing value from an unknown option.
    for (int code; (code = getopt_long(argc, argv, ":", kLongOptions.data(), nullptr)) != -1;) {
        // A short option may be in the middle of a word that optind has not passed yet.
        const std::string typed =
            optopt >= ' ' ? std::string{'-', static_cast<char>(optopt)} : argv[optind - 1];
        if (code == '?') {
            return UsageError{"unknown option " + typed};
        }
        if (code == ':' || (optarg != nullptr && *optarg == '\0')) {
            return UsageError{typed + " needs a value"};
        }
        if (std::string error = store(options, code, optarg); !error.empty()) {
            return UsageError{std::move(error) + ", not '" + optarg + "'"};
        }
    }
    if (options.help || options.version) {
        return options;
    }
    if (optind == argc) {
        return UsageError{"DIRECTORY is missing; see orvane-host --help"};
    }
    if (optind + 1 < argc) {
        return UsageError{std::string("more than one DIRECTORY: '") + argv[optind + 1] + "'"};
    }
    options.directory = argv[optind];
    if (std::string error = findContradiction(options); !error.empty()) {
        return UsageError{std::move(error)};
    }
    return options;
}

}  // namespace orvane::host
