#include "orvane/services/camera/ControlThread.h"

#include <chrono>
#include <utility>

#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSLog.h"

namespace orvane::services {

namespace {

constexpr std::chrono::seconds kPatience{8};

}  // namespace

struct ControlThread::Loop {
    GMainContext* const context = g_main_context_new();
    GMainLoop* const loop = g_main_loop_new(context, FALSE);

    Loop() = default;
    ~Loop() {
        g_main_loop_unref(loop);
        g_main_context_unref(context);
    }
    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;

    void run() const {
        const platform::UnjoinedThread unjoined;
        g_main_context_push_thread_default(context);
        g_main_loop_run(loop);
        g_main_context_pop_thread_default(context);
    }
};

ControlThread::ControlThread() : loop_(std::make_shared<Loop>()) {
    std::packaged_task<void()> task([loop = loop_] { loop->run(); });
    ended_ = task.get_future();
    thread_ = std::thread(std::move(task));
}

ControlThread::~ControlThread() {
    run([loop = loop_] { g_main_loop_quit(loop->loop); });
    if (ended_.wait_for(kPatience) == std::future_status::ready) {
        thread_.join();
    } else {
        platform::NSLog("A camera does not end; it is left to itself");
        thread_.detach();
    }
}

void ControlThread::run(std::function<void()> work) const {
    GSource* const source = g_idle_source_new();
    g_source_set_priority(source, G_PRIORITY_DEFAULT);
    g_source_set_callback(
        source,
        [](gpointer data) {
            (*static_cast<std::function<void()>*>(data))();
            return G_SOURCE_REMOVE;
        },
        new std::function<void()>(std::move(work)),
        [](gpointer data) { delete static_cast<std::function<void()>*>(data); });
    g_source_attach(source, loop_->context);
    g_source_unref(source);
}

}  // namespace orvane::services
