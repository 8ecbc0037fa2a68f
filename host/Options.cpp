#include "host/Options.h"

#include <getopt.h>

#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "host/parseNumber.h"

namespace orvane::host {

const char* const usage =
    R"(Usage: orvane-host [options] DIRECTORY
Starts every application library in DIRECTORY and shows what it displays.

  --offscreen        show nothing: render in memory. So it is by itself where there is no display;
                     what would be seen is then written to orvane.png, unless an option says else
  --size WxH         size of the window's content in points (1280x800)
  --scale S          pixels a point (the display's own; 1 off-screen)
  --resources DIR    the resource folder, for this run only
  --snapshot FILE    write what is on screen to a PNG file, then exit
  --dump-tree        print the object tree and the layer tree, then exit
  --at SECONDS       when to do so (as soon as the application's main has returned, all events are
                     played and nothing is left to paint)
  --events FILE      play pointer events; a line is SECONDS down|move|up X Y, # starts a comment
  --frames DIR       off-screen: write every frame of an animation as a numbered PNG, then exit
  --fps N            frames a second (60)
  --seconds S        how much time the frames cover (1)
  --help             print this
  --version          print the version

Exits with 0 when it did what was asked, 1 when no application could be started, 2 when what was
asked cannot be done.
)";

namespace {

// More pixels than this no picture can have: the canvas library counts in 15 bits.
constexpr double longestSide = 32767;

enum OptionCode {
    Offscreen = 1,
    Size,
    Scale,
    Resources,
    Snapshot,
    At,
    Events,
    DumpTree,
    Frames,
    Fps,
    Seconds,
    Help,
    Version,
};

constexpr std::array<option, 14> longOptions{{
    {"offscreen", no_argument, nullptr, Offscreen},
    {"size", required_argument, nullptr, Size},
    {"scale", required_argument, nullptr, Scale},
    {"resources", required_argument, nullptr, Resources},
    {"snapshot", required_argument, nullptr, Snapshot},
    {"at", required_argument, nullptr, At},
    {"events", required_argument, nullptr, Events},
    {"dump-tree", no_argument, nullptr, DumpTree},
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
    // A window is made of whole points.
    const auto isSide = [](const std::optional<double>& side) {
        return side && *side >= 1 && *side <= longestSide && *side == std::floor(*side);
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

// What is wrong with the value of the option just read; empty for nothing.
std::string take(Options& options, int code, const char* value) {
    switch (code) {
        case Offscreen:
            options.offscreen = true;
            break;
        case Size: {
            const auto size = parseSize(value);
            if (!size) {
                return "--size wants WxH in whole points, like 1280x800";
            }
            options.size = *size;
            break;
        }
        case Scale:
            options.scale = parsePositive(value);
            if (!options.scale) {
                return "--scale wants a number above 0";
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
                return "--at wants seconds, 0 or more";
            }
            break;
        case Events:
            options.events = value;
            break;
        case DumpTree:
            options.dumpTree = true;
            break;
        case Frames:
            options.frames = value;
            break;
        case Fps:
        case Seconds: {
            const auto number = parsePositive(value);
            if (!number) {
                return std::string(code == Fps ? "--fps" : "--seconds") + " wants a number above 0";
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

// What options, each good by itself, cannot be together; empty for nothing.
std::string findContradiction(const Options& options) {
    const double scale = options.scale.value_or(1);
    if (options.size.width * scale > longestSide || options.size.height * scale > longestSide) {
        return "--size times --scale is more than 32767 pixels";
    }
    if (!options.frames.empty() && (!options.snapshot.empty() || options.at)) {
        return "--frames writes pictures of its own: it goes with neither --snapshot nor --at";
    }
    if (options.fps * options.seconds > 1e6) {
        return "--fps times --seconds is more than a million frames";
    }
    return {};
}

}  // namespace

std::variant<Options, UsageError> parseOptions(int argc, char** argv) {
    Options options;
    opterr = 0;  // getopt's own messages: ours name the option as it was typed
    optind = 1;
    // The leading colon tells a missing value from an unknown option.
    for (int code; (code = getopt_long(argc, argv, ":", longOptions.data(), nullptr)) != -1;) {
        // A short option may stand in the middle of a word, which optind has not passed yet.
        const std::string typed =
            optopt >= ' ' ? std::string{'-', static_cast<char>(optopt)} : argv[optind - 1];
        if (code == '?') {
            return UsageError{"bad option " + typed};
        }
        if (code == ':' || (optarg != nullptr && *optarg == '\0')) {
            return UsageError{typed + " wants a value"};
        }
        if (std::string error = take(options, code, optarg); !error.empty()) {
            return UsageError{std::move(error) + ", not '" + optarg + "'"};
        }
    }
    if (options.help || options.version) {
        return options;
    }
    if (optind == argc) {
        return UsageError{"which DIRECTORY? See orvane-host --help"};
    }
    if (optind + 1 < argc) {
        return UsageError{std::string("one DIRECTORY only, not '") + argv[optind + 1] + "' too"};
    }
    options.directory = argv[optind];
    if (std::string error = findContradiction(options); !error.empty()) {
        return UsageError{std::move(error)};
    }
    return options;
}

}  // namespace orvane::host
