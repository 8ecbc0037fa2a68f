#include "orvane/runtime/FFIClosure.h"

#include <ffi.h>

namespace orvane::runtime {

struct FFIClosureData {
    static void callback(ffi_cif* cif, void* result, void** arguments, void* closure);

    ffi_cif cif{};
    ffi_closure* closure = nullptr;
    // Read by the cif: must live as long as it does.
    std::vector<ffi_type*> arguments;
    void* function = nullptr;
};

namespace {

ffi_type* descriptorOf(FFIType type) {
    switch (type) {
        case FFIType::Pointer:
            return &ffi_type_pointer;
        case FFIType::Float:
            return &ffi_type_float;
        case FFIType::Double:
            return &ffi_type_double;
        case FFIType::Int8:
            return &ffi_type_sint8;
        case FFIType::UInt8:
        case FFIType::Bool:
            return &ffi_type_uint8;
        case FFIType::Int16:
            return &ffi_type_sint16;
        case FFIType::UInt16:
            return &ffi_type_uint16;
        case FFIType::Int32:
            return &ffi_type_sint32;
        case FFIType::UInt32:
            return &ffi_type_uint32;
        case FFIType::Int64:
            return &ffi_type_sint64;
        case FFIType::UInt64:
            return &ffi_type_uint64;
        case FFIType::Void:
            break;
    }
    return &ffi_type_void;
}

}  // namespace

void FFIClosureData::callback(ffi_cif* /*cif*/, void* result, void** arguments, void* closure) {
    if (closure) {
        static_cast<FFIClosure*>(closure)->handler(result, arguments);
    }
}

FFIClosure::FFIClosure(FFIType result, const std::vector<FFIType>& arguments)
    : data_(std::make_unique<FFIClosureData>()) {
    data_->closure =
        static_cast<ffi_closure*>(ffi_closure_alloc(sizeof(ffi_closure), &data_->function));
    if (!data_->closure) {
        return;
    }
    data_->arguments.reserve(arguments.size());
    for (const FFIType type : arguments) {
        data_->arguments.push_back(descriptorOf(type));
    }
    ffi_prep_cif(&data_->cif, FFI_DEFAULT_ABI, static_cast<unsigned int>(arguments.size()),
                 descriptorOf(result), data_->arguments.data());
    ffi_prep_closure_loc(data_->closure, &data_->cif, &FFIClosureData::callback, this,
                         data_->function);
}

FFIClosure::~FFIClosure() {
    if (data_->closure) {
        ffi_closure_free(data_->closure);
    }
}

void* FFIClosure::getFunctionPtr() const {
    return data_->closure ? data_->function : nullptr;
}

}  // namespace orvane::runtime
