#include "orvane/runtime/FFIClosure.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <functional>
#include <tuple>
#include <type_traits>

namespace {

using orvane::runtime::FFIClosure;
using orvane::runtime::FFIType;

class Closure : public FFIClosure {
public:
    using Handler = std::function<void(void*, void**)>;

    Closure(FFIType result, const std::vector<FFIType>& arguments, Handler handler)
        : FFIClosure(result, arguments), handler_(std::move(handler)) {}

    void handler(void* result, void** arguments) override { handler_(result, arguments); }

    template <typename Function>
    [[nodiscard]] Function* as() const {
        return std::bit_cast<Function*>(getFunctionPtr());
    }

private:
    Handler handler_;
};

template <typename... Arguments>
void read(std::tuple<Arguments...>& values, void** arguments) {
    std::apply([&](auto&... value) { ((value = *static_cast<Arguments*>(*arguments++)), ...); },
               values);
}

TEST(FFIClosure, EveryTypeArrivesAsItWasPassed) {
    using Function =
        double(void*, float, double, std::int8_t, std::uint8_t, std::int16_t, std::uint16_t,
               std::int32_t, std::uint32_t, std::int64_t, std::uint64_t, bool);
    int marker = 0;
    const std::tuple passed(static_cast<void*>(&marker), 1.5F, -2.5, std::int8_t{-128},
                            std::uint8_t{255}, std::int16_t{-32768}, std::uint16_t{65535},
                            INT32_MIN, UINT32_MAX, std::int64_t{INT64_MIN},
                            std::uint64_t{UINT64_MAX}, true);
    std::remove_const_t<decltype(passed)> arrived;
    const Closure closure(FFIType::Double,
                          {FFIType::Pointer, FFIType::Float, FFIType::Double, FFIType::Int8,
                           FFIType::UInt8, FFIType::Int16, FFIType::UInt16, FFIType::Int32,
                           FFIType::UInt32, FFIType::Int64, FFIType::UInt64, FFIType::Bool},
                          [&](void* result, void** arguments) {
                              read(arrived, arguments);
                              *static_cast<double*>(result) = 4.25;
                          });
    EXPECT_EQ(std::apply(closure.as<Function>(), passed), 4.25);
    EXPECT_EQ(arrived, passed);
}

TEST(FFIClosure, AnUnknownTypeIsVoid) {
    for (const unsigned int value : {0U, 13U, 4294967295U}) {
        int calls = 0;
        const Closure closure(FFIType{value}, {}, [&](void*, void**) { ++calls; });
        closure.as<void()>()();
        EXPECT_EQ(calls, 1) << value;
        const Closure argument(FFIType::Void, {FFIType{value}}, [](void*, void**) {});
        EXPECT_NE(argument.getFunctionPtr(), nullptr) << value;
    }
}

}  // namespace
