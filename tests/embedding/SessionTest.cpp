#include "orvane/embedding/Session.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "orvane/orvane.h"
#include "platform/dispatch/dispatch.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using orvane::embedding::Session;
using orvane::platform::DispatchSemaphore;
using orvane::platform::OffscreenWindow;
using orvane::tests::TemporaryUser;

// A timed task must neither keep the session's end waiting for the network nor wait itself for a
// main queue that nothing drains.
TEST(Session, EndsWhileATaskWaitsForAnAnswerAndThenForTheMainThread) {
    const TemporaryUser user;
    // A server that accepts connections and never answers.
    const std::unique_ptr<GSocketListener, decltype(&g_object_unref)> server(
        g_socket_listener_new(), &g_object_unref);
    const int port = g_socket_listener_add_any_inet_port(server.get(), nullptr, nullptr);
    ASSERT_NE(port, 0);
    OffscreenWindow window({80, 60}, 1);
    bool isAnswered = true;
    bool ranOnMainThread = false;
    // The task uses these until the session has ended.
    DispatchSemaphore started(0);
    orvane::network::Request request;
    request.setUrl("http://127.0.0.1:" + std::to_string(port) + "/");
    {
        const Session session(window, "/nowhere");
        orvane::Runtime::GetInstance()->run(
            [&] {
                started.signal();
                isAnswered = orvane::network::RequestService::syncRequest(request).isOk();
                orvane::thread::dispatch_main(
                    [&] { ranOnMainThread = orvane::platform::isMainThread(); });
            },
            0);
        started.wait();
    }
    EXPECT_FALSE(isAnswered);
    EXPECT_TRUE(ranOnMainThread);
    EXPECT_EQ(window.contentView(), nullptr);
}

}  // namespace
