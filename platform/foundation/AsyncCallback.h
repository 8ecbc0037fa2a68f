#pragma once

#include <gio/gio.h>

#include <memory>
#include <utility>

namespace orvane::platform {

// A function that an asynchronous call of GIO calls once, when it has finished:
//
//     auto* const done = makeAsyncCallback([](GObject* source, GAsyncResult* result) { ... });
//     g_file_read_async(file, G_PRIORITY_DEFAULT, nullptr, &done->call, done);
template <typename Function>
struct AsyncCallback {
    Function function;

    // To be passed to the call with the AsyncCallback, which this deletes.
    static void call(GObject* source, GAsyncResult* result, void* self) {
        const std::unique_ptr<AsyncCallback> callback(static_cast<AsyncCallback*>(self));
        callback->function(source, result);
    }
};

// The caller passes the result to exactly one call of GIO, which owns it from then on.
template <typename Function>
AsyncCallback<Function>* makeAsyncCallback(Function function) {
    return new AsyncCallback<Function>{std::move(function)};
}

}  // namespace orvane::platform
