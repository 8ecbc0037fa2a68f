#pragma once

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <typeindex>

namespace orvane::commons {

// Returns the name of a class without its namespaces, for people. Any thread.
inline std::string className(const std::type_index& type) {
    const std::unique_ptr<char, decltype(&std::free)> demangled(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, nullptr), &std::free);
    const std::string name = demangled ? demangled.get() : type.name();
    const auto colons = name.rfind("::");
    return colons == std::string::npos ? name : name.substr(colons + 2);
}

}  // namespace orvane::commons
