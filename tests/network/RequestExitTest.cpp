#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <semaphore>
#include <thread>

#include "TestServer.h"
#include "orvane/network/Request.h"
#include "orvane/network/RequestService.h"
#include "orvane/network/Response.h"

namespace orvane::network {
namespace {

TEST(RequestExitDeathTest, EndsTheProcessWithRequestsOnTheirWay) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            alarm(30);
            constexpr int count = 20;
            // They go after the session, which is made later.
            static std::counting_semaphore<> arrived(0);
            static TestServer server([](const auto&, auto& connection) {
                arrived.release();
                connection.stall();
            });
            Request request;
            request.setUrl(server.url("/"));
            for (int i = 0; i < count; ++i) {
                RequestService::asyncRequest(request, [](const Response&) {});
            }
            std::thread([request] {
                static_cast<void>(RequestService::syncRequest(request));
            }).detach();
            for (int i = 0; i <= count; ++i) {
                arrived.acquire();
            }
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace orvane::network
