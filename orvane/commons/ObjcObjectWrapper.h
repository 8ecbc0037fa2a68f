#pragma once

// What a ByteArray made from a native object has as its owner: a mark of where the bytes come from.
// It takes no reference, so it does not extend the object's life; whoever hands the ByteArray on
// keeps the object alive. Callers rely on the bytes never being held longer than that.
class ObjcObjectWrapper {
public:
    explicit ObjcObjectWrapper(const void* object) : object_(object) {}
    virtual ~ObjcObjectWrapper() = default;

private:
    [[maybe_unused]] const void* object_;
};
