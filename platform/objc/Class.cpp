#include "platform/objc/Class.h"

#include <dlfcn.h>

#include <mutex>
#include <vector>

namespace orvane::platform {

namespace {

// Objects are never destroyed. Keeping a pointer to each tells leak checkers that this is intended.
void keepReachable(void* object) {
    static std::mutex mutex;
    static auto& objects = *new std::vector<void*>;
    const std::lock_guard lock(mutex);
    objects.push_back(object);
}

}  // namespace

std::optional<Class> Class::getClass(void* library, const std::string& name) {
    const auto* record = static_cast<const OrvaneMainClass*>(dlsym(library, name.c_str()));
    if (!record || record->version != OrvaneMainClassVersion || !record->make ||
        !record->sendMain) {
        return std::nullopt;
    }
    return Class(*record);
}

Class::Class(const OrvaneMainClass& record) : record_(&record) {}

void* Class::makeObject() const {
    void* const object = record_->make();
    keepReachable(object);
    return object;
}

void Class::sendMain(void* object) const {
    record_->sendMain(object);
}

}  // namespace orvane::platform
