#include "host/WindowState.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "host/parseNumber.h"

namespace orvane::host {

std::optional<WindowState> readWindowState(const std::string& path) {
    std::ifstream file(path);
    double numbers[4] = {};
    int count = 0;
    for (std::string word; count < 4 && file >> word; ++count) {
        const auto number = parseNumber(word);
        if (!number || *number != std::floor(*number) || std::abs(*number) > 32767) {
            return {};
        }
        numbers[count] = *number;
    }
    if (count < 2 || numbers[0] < 1 || numbers[1] < 1) {
        return {};
    }
    WindowState state{{numbers[0], numbers[1]}, {}};
    if (count == 4) {
        state.place = {numbers[2], numbers[3]};
    }
    return state;
}

bool writeWindowState(const std::string& path, const WindowState& state) {
    // In one step: the process may be killed at any time.
    const std::string written = path + ".new";
    std::ofstream file(written);
    file << state.size.width << ' ' << state.size.height;
    if (state.place) {
        file << ' ' << state.place->x << ' ' << state.place->y;
    }
    file << '\n';
    file.close();
    std::error_code error;
    if (file) {
        std::filesystem::rename(written, path, error);
    }
    return file && !error;
}

}  // namespace orvane::host
