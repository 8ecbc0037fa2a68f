#pragma once

#include <memory>
#include <vector>

#include "orvane/commons/Export.h"

namespace orvane::runtime {

// A type in the signature of a native call. Any other value stands for Void.
enum class FFIType : unsigned int {
    Void = 0,
    Pointer = 1,
    Float = 2,
    Double = 3,
    Int8 = 4,
    UInt8 = 5,
    Int16 = 6,
    UInt16 = 7,
    Int32 = 8,
    UInt32 = 9,
    Int64 = 10,
    UInt64 = 11,
    Bool = 12,
};

struct FFIClosureData;

// An object that native code can call as a plain function. A subclass says what the call does; the
// signature is chosen at run time. The function may be called on any thread for as long as the
// object lives, and lands in handler() on that thread.
class ORVANE_EXPORT FFIClosure {
public:
    FFIClosure(FFIType result, const std::vector<FFIType>& arguments);
    virtual ~FFIClosure();

    // The function's address is tied to the object's.
    FFIClosure(const FFIClosure&) = delete;
    FFIClosure& operator=(const FFIClosure&) = delete;

    // `arguments` are pointers to the values. `result` is where the value goes; an integer narrower
    // than a machine word is written as a whole word.
    virtual void handler(void* result, void** arguments) = 0;

    // Null when the system gives no executable memory.
    [[nodiscard]] void* getFunctionPtr() const;

private:
    std::unique_ptr<FFIClosureData> data_;
};

}  // namespace orvane::runtime
