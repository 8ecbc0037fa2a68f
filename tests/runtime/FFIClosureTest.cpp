#include "orvane/runtime/FFIClosure.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <tuple>

namespace {

using orvane::runtime::FFIClosure;
using orvane::runtime::FFIType;

template <typename... Arguments>
class Closure : public FFIClosure {
public:
    using FFIClosure::FFIClosure;

    void handler(void* result, void** arguments) override {
        const auto read = [&](Arguments&... value) {
            ((value = *static_cast<Arguments*>(*arguments++)), ...);
        };
        std::apply(read, arrived);
        *static_cast<double*>(result) = 4.25;
    }

    std::tuple<Arguments...> arrived;
};

template <typename... Arguments>
void expectToArrive(const std::vector<FFIType>& types, Arguments... passed) {
    const Closure<Arguments...> closure(FFIType::Double, types);
    auto* const function = std::bit_cast<double (*)(Arguments...)>(closure.getFunctionPtr());
    EXPECT_EQ(function(passed...), 4.25);
    EXPECT_EQ(closure.arrived, std::tuple(passed...));
}

TEST(FFIClosure, PassesAnArgumentOfEveryType) {
    int marker = 0;
    expectToArrive({FFIType::Pointer, FFIType::Float, FFIType::Double, FFIType::Int8,
                    FFIType::UInt8, FFIType::Int16, FFIType::UInt16, FFIType::Int32,
                    FFIType::UInt32, FFIType::Int64, FFIType::UInt64, FFIType::Bool},
                   static_cast<void*>(&marker), 1.5F, -2.5, std::int8_t{-128}, std::uint8_t{255},
                   std::int16_t{-32768}, std::uint16_t{65535}, INT32_MIN, UINT32_MAX,
                   std::int64_t{INT64_MIN}, std::uint64_t{UINT64_MAX}, true);
}

}  // namespace
