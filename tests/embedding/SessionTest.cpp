#include "orvane/embedding/Session.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

#include "orvane/network/Request.h"
#include "orvane/network/RequestService.h"
#include "orvane/network/Response.h"
#include "orvane/runtime/Runtime.h"
#include "orvane/system/system.h"
#include "orvane/thread/dispatch.h"
#include "platform/dispatch/dispatch.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using orvane::embedding::Session;
using orvane::platform::DispatchSemaphore;
using orvane::platform::OffscreenWindow;
using orvane::tests::TemporaryUser;
namespace system = orvane::system;

// A server that accepts connections and never answers.
class SilentServer {
public:
    SilentServer() {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const generic = reinterpret_cast<sockaddr*>(&address);
        EXPECT_EQ(bind(socket_, generic, size), 0);
        EXPECT_EQ(listen(socket_, 8), 0);
        EXPECT_EQ(getsockname(socket_, generic, &size), 0);
        address_ = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/";
    }
    ~SilentServer() { close(socket_); }
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    [[nodiscard]] const std::string& address() const { return address_; }

private:
    int socket_ = ::socket(AF_INET, SOCK_STREAM, 0);
    std::string address_;
};

// A timed task must neither keep the session's end waiting for the network nor wait itself for a
// main queue that nothing drains.
TEST(Session, EndsWhileATaskWaitsForAnAnswerAndThenForTheMainThread) {
    const TemporaryUser user;
    const SilentServer server;
    OffscreenWindow window({80, 60}, 1);
    bool isAnswered = true;
    bool ranOnMainThread = false;
    {
        const Session session(window, "/nowhere");
        DispatchSemaphore started(0);
        orvane::network::Request request;
        request.setUrl(server.address());
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

TEST(Session, TheShapeOfTheWindowDecidesTheOrientation) {
    const TemporaryUser user;
    OffscreenWindow window({60, 80}, 1);
    Session session(window, "/nowhere");
    EXPECT_TRUE(system::isPortraitScreenOrientation());
    session.resize({80, 80});
    EXPECT_FALSE(system::isPortraitScreenOrientation());
}

}  // namespace
