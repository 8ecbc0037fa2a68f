#include "orvane/runtime/FFIClosure.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <functional>

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

template <typename T>
T at(void** arguments, int index) {
    return *static_cast<T*>(arguments[index]);
}

TEST(FFIClosure, EveryTypeArrivesAsItWasPassed) {
    int marker = 0;
    int calls = 0;
    const Closure closure(FFIType::Double,
                          {FFIType::Pointer, FFIType::Float, FFIType::Double, FFIType::Int8,
                           FFIType::UInt8, FFIType::Int16, FFIType::UInt16, FFIType::Int32,
                           FFIType::UInt32, FFIType::Int64, FFIType::UInt64, FFIType::Bool},
                          [&](void* result, void** arguments) {
                              ++calls;
                              EXPECT_EQ(at<void*>(arguments, 0), &marker);
                              EXPECT_EQ(at<float>(arguments, 1), 1.5F);
                              EXPECT_EQ(at<double>(arguments, 2), -2.5);
                              EXPECT_EQ(at<std::int8_t>(arguments, 3), -128);
                              EXPECT_EQ(at<std::uint8_t>(arguments, 4), 255);
                              EXPECT_EQ(at<std::int16_t>(arguments, 5), -32768);
                              EXPECT_EQ(at<std::uint16_t>(arguments, 6), 65535);
                              EXPECT_EQ(at<std::int32_t>(arguments, 7), INT32_MIN);
                              EXPECT_EQ(at<std::uint32_t>(arguments, 8), UINT32_MAX);
                              EXPECT_EQ(at<std::int64_t>(arguments, 9), INT64_MIN);
                              EXPECT_EQ(at<std::uint64_t>(arguments, 10), UINT64_MAX);
                              EXPECT_EQ(at<bool>(arguments, 11), true);
                              *static_cast<double*>(result) = 4.25;
                          });
    const auto function =
        closure
            .as<double(void*, float, double, std::int8_t, std::uint8_t, std::int16_t, std::uint16_t,
                       std::int32_t, std::uint32_t, std::int64_t, std::uint64_t, bool)>();
    EXPECT_EQ(function(&marker, 1.5F, -2.5, -128, 255, -32768, 65535, INT32_MIN, UINT32_MAX,
                       INT64_MIN, UINT64_MAX, true),
              4.25);
    EXPECT_EQ(calls, 1);
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
