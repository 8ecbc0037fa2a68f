#pragma once

// The owner of a ByteArray that was made from a native object: it records where the bytes come
// from. It holds no reference, so it does not extend the native object's life. The code that passes
// the ByteArray on keeps the object alive; callers rely on the bytes not being held longer than
// that.
class ObjcObjectWrapper {
public:
    explicit ObjcObjectWrapper(const void* object) : object_(object) {}
    virtual ~ObjcObjectWrapper() = default;

private:
    [[maybe_unused]] const void* object_;
};
