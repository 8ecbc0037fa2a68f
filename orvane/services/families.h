#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "orvane/commons/Export.h"

// The families of services that reach the user's data and devices. A host may deny a family; to the
// application, that looks as if the user had not given the permission. No service is contacted
// before the application calls it. Main thread only.
namespace orvane::services {

// What a host can deny as a whole.
enum class Family : std::uint8_t { Contacts, Geolocation, Camera, Map, Web };

// Returns the family with a name that users type, such as "contacts"; nothing if there is none.
[[nodiscard]] ORVANE_EXPORT std::optional<Family> familyNamed(std::string_view name);
// Returns the names of all families, joined by ", ".
[[nodiscard]] ORVANE_EXPORT std::string familyNames();

// Denies a family for the rest of the process. For hosts; what has been started before goes on.
ORVANE_EXPORT void denyFamily(Family family);
// Whether the host denies a family. Each service asks before it contacts anything.
[[nodiscard]] ORVANE_EXPORT bool isFamilyDenied(Family family);

}  // namespace orvane::services
