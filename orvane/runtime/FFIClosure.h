#pragma once

#include <memory>
#include <vector>

#include "orvane/commons/Export.h"

namespace orvane::runtime {

// A type in the signature of a native call. The numbers are part of the interface: callers pass
// them as integers. Any other number means Void.
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

// Makes an object callable as a plain C function whose signature is chosen at run time. A subclass
// implements handler(). Any thread may call the function while the object lives; handler() runs on
// that thread. The object can be neither copied nor moved, because the function contains its
// address.
class ORVANE_EXPORT FFIClosure {
public:
    FFIClosure(FFIType result, const std::vector<FFIType>& arguments);
    virtual ~FFIClosure();

    FFIClosure(const FFIClosure&) = delete;
    FFIClosure& operator=(const FFIClosure&) = delete;

    // Handles a call of the function. `arguments` contains a pointer to each argument's value.
    // `result` points to the memory for the result; an integer result that is narrower than a
    // machine word must be written as a whole word (libffi's rule).
    virtual void handler(void* result, void** arguments) = 0;

    // Returns the function, valid until this object is destroyed. Null if the system provides no
    // executable memory.
    [[nodiscard]] void* getFunctionPtr() const;

private:
    std::unique_ptr<FFIClosureData> data_;
};

}  // namespace orvane::runtime
