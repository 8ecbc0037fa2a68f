#pragma once

#include <string_view>

namespace network {

// picture.png and facts.json, which the build puts into the library.
extern const std::string_view kPicture;
extern const std::string_view kFacts;

}  // namespace network
