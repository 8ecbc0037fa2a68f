#include <zlib.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <numbers>
#include <string>
#include <vector>

// Draws the map of a world that does not exist, so that the example needs no network: tiles in Web
// Mercator, as files <zoom>/<x>/<y>.png. Run by the build.
namespace {

constexpr int kSide = 256;
constexpr int kMostZoom = 3;

struct Vector {
    double x, y, z;
};

struct Color {
    double red, green, blue;
};

// A number from 0 to 1 for each point of a grid (the finalizer of MurmurHash3).
double noiseAt(int x, int y, int z) {
    auto hash = static_cast<std::uint32_t>(x) * 0x9E3779B1U ^
                static_cast<std::uint32_t>(y) * 0x85EBCA77U ^
                static_cast<std::uint32_t>(z) * 0xC2B2AE3DU;
    hash = (hash ^ hash >> 16) * 0x85EBCA6BU;
    hash = (hash ^ hash >> 13) * 0xC2B2AE35U;
    return (hash ^ hash >> 16) / 4294967295.0;
}

double smooth(double t) {
    return t * t * (3 - 2 * t);
}

double noise(const Vector& at) {
    const double fx = std::floor(at.x);
    const double fy = std::floor(at.y);
    const double fz = std::floor(at.z);
    const int x = static_cast<int>(fx);
    const int y = static_cast<int>(fy);
    const int z = static_cast<int>(fz);
    const double tx = smooth(at.x - fx);
    const double ty = smooth(at.y - fy);
    const auto along = [&](int row, int layer) {
        return std::lerp(noiseAt(x, row, layer), noiseAt(x + 1, row, layer), tx);
    };
    return std::lerp(std::lerp(along(y, z), along(y + 1, z), ty),
                     std::lerp(along(y, z + 1), along(y + 1, z + 1), ty), smooth(at.z - fz));
}

// The height of the land at a place on the globe; below 0 is sea.
double heightAt(const Vector& place, int octaves) {
    double height = -0.52;
    double part = 0.5;
    double frequency = 1.9;
    for (int i = 0; i < octaves; ++i) {
        height += part * noise({place.x * frequency + 7, place.y * frequency + 3,  //
                                place.z * frequency + 11 * i});
        part *= 0.52;
        frequency *= 2.03;
    }
    return height;
}

Vector onGlobe(double x, double y) {
    const double longitude = 2 * std::numbers::pi * x;
    const double latitude = std::atan(std::sinh(std::numbers::pi * (1 - 2 * y)));
    return {std::cos(latitude) * std::cos(longitude), std::cos(latitude) * std::sin(longitude),
            std::sin(latitude)};
}

Color colorOf(double height) {
    constexpr std::array<std::pair<double, Color>, 9> kColors{{{-0.30, {0.48, 0.66, 0.78}},
                                                               {-0.08, {0.62, 0.77, 0.86}},
                                                               {-0.001, {0.75, 0.87, 0.92}},
                                                               {0.0, {0.93, 0.90, 0.80}},
                                                               {0.012, {0.84, 0.88, 0.73}},
                                                               {0.09, {0.72, 0.82, 0.64}},
                                                               {0.17, {0.86, 0.81, 0.67}},
                                                               {0.25, {0.78, 0.70, 0.60}},
                                                               {0.33, {0.97, 0.97, 0.96}}}};
    std::size_t next = 1;
    while (next + 1 < kColors.size() && kColors[next].first < height) {
        ++next;
    }
    const auto& [low, from] = kColors[next - 1];
    const auto& [high, to] = kColors[next];
    const double t = std::clamp((height - low) / (high - low), 0.0, 1.0);
    return {std::lerp(from.red, to.red, t), std::lerp(from.green, to.green, t),
            std::lerp(from.blue, to.blue, t)};
}

std::vector<std::uint8_t> drawTile(int zoom, int column, int row) {
    const int octaves = 4 + zoom;
    const double step = 1.0 / kSide / (1 << zoom);
    // With one more column and row, for the slope.
    constexpr int kHeights = kSide + 1;
    std::vector<double> heights;
    for (int y = 0; y < kHeights; ++y) {
        for (int x = 0; x < kHeights; ++x) {
            heights.push_back(
                heightAt(onGlobe((column * kSide + x + 0.5) * step, (row * kSide + y + 0.5) * step),
                         octaves));
        }
    }
    std::vector<std::uint8_t> rows;
    for (int y = 0; y < kSide; ++y) {
        rows.push_back(0);  // no filter
        for (int x = 0; x < kSide; ++x) {
            const auto at = static_cast<std::size_t>(y * kHeights + x);
            const double height = heights[at];
            // Light from the north west.
            const double slope = heights[at + 1] + heights[at + kHeights] - 2 * height;
            const double relief = height > 0 ? 0.35 : 0.06;
            const double light = std::clamp(1 + slope / step * relief * 0.06, 0.78, 1.16);
            const Color color = colorOf(height);
            for (const double part : {color.red, color.green, color.blue}) {
                rows.push_back(static_cast<std::uint8_t>(std::clamp(part * light, 0.0, 1.0) * 255));
            }
        }
    }
    return rows;
}

void append(std::string& text, std::uint32_t number) {
    for (const int shift : {24, 16, 8, 0}) {
        text.push_back(static_cast<char>(number >> shift & 0xFF));
    }
}

void appendChunk(std::string& png, const std::string& kind, const std::string& content) {
    append(png, static_cast<std::uint32_t>(content.size()));
    const std::string checked = kind + content;
    png += checked;
    append(png, static_cast<std::uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(checked.data()),
                                                 static_cast<uInt>(checked.size()))));
}

std::string toPng(const std::vector<std::uint8_t>& rows) {
    uLongf size = compressBound(rows.size());
    std::string packed(size, '\0');
    compress(reinterpret_cast<Bytef*>(packed.data()), &size, rows.data(), rows.size());
    packed.resize(size);
    std::string header;
    append(header, kSide);
    append(header, kSide);
    header += std::string("\x08\x02\x00\x00\x00", 5);  // three components of 8 bits
    std::string png = "\x89PNG\r\n\x1A\n";
    appendChunk(png, "IHDR", header);
    appendChunk(png, "IDAT", packed);
    appendChunk(png, "IEND", "");
    return png;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: make-tiles FOLDER\n";
        return 1;
    }
    for (int zoom = 0; zoom <= kMostZoom; ++zoom) {
        for (int x = 0; x < 1 << zoom; ++x) {
            const std::filesystem::path folder =
                std::filesystem::path(arguments[1]) / std::to_string(zoom) / std::to_string(x);
            std::filesystem::create_directories(folder);
            for (int y = 0; y < 1 << zoom; ++y) {
                std::ofstream(folder / (std::to_string(y) + ".png"), std::ios::binary)
                    << toPng(drawTile(zoom, x, y));
            }
        }
    }
    return 0;
}
