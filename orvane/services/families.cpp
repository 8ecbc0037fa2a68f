#include "orvane/services/families.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace orvane::services {

namespace {

// In the order of the enumerators.
constexpr std::array<std::string_view, 5> kNames{"contacts", "geolocation", "camera", "map", "web"};

std::array<bool, kNames.size()> denied{};

}  // namespace

std::optional<Family> familyNamed(std::string_view name) {
    const auto* const found = std::ranges::find(kNames, name);
    if (found == kNames.end()) {
        return {};
    }
    return static_cast<Family>(found - kNames.begin());
}

std::string familyNames() {
    std::string names;
    for (const std::string_view name : kNames) {
        names.append(names.empty() ? "" : ", ").append(name);
    }
    return names;
}

void denyFamily(Family family) {
    denied.at(static_cast<std::size_t>(family)) = true;
}

bool isFamilyDenied(Family family) {
    return denied.at(static_cast<std::size_t>(family));
}

}  // namespace orvane::services
