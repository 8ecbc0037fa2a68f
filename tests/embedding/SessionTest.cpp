#include "orvane/embedding/Session.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "orvane/embedding/Accessibility.h"
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

TEST(Accessibility, DescribesWhatIsShown) {
    using namespace orvane::display;
    using Role = orvane::platform::NSAccessibilityRole;
    const TemporaryUser user;
    OffscreenWindow window({80, 60}, 1);
    const Session session(window, "/nowhere");
    EXPECT_EQ(orvane::system::getResourceDirectory(), "/nowhere") << "unless the host has another";
    const auto add = [](const std::shared_ptr<DisplayObject>& object, const std::string& label) {
        Display::instance()->add(object);
        if (!label.empty()) {
            object->getOrCreateAccessibilityElement()->setLabel(label);
        }
    };
    const auto text = DisplayFactory::createText(false);
    text->setContent("content");
    const auto button = DisplayFactory::createContainer();
    const auto inButton = DisplayFactory::createText(false);
    inButton->setContent("Press");
    button->add(inButton);
    button->getOrCreateAccessibilityElement()->setRole(AccessibilityRole::Button);
    add(text, "");
    add(button, "");
    add(DisplayFactory::createRect(), "picture");
    add(DisplayFactory::createRect(), "");
    add(DisplayFactory::createContainer(), "group");
    const auto slider = DisplayFactory::createRect();
    slider->set(5, 6, 7, 8);
    add(slider, "volume");
    AccessibilityElement& described = *slider->getOrCreateAccessibilityElement();
    described.setRole(AccessibilityRole::Slider);
    described.setDescription("of the music");
    described.setValue("a fifth");
    described.setRange({{1, 6, 2}});
    described.setChecked(true);
    described.setSelected(false);
    described.setExpanded(true);
    described.setEnabled(false);
    described.setAction(AccessibilityAction::Increment, [] {});
    const auto elements = orvane::embedding::Accessibility(*Display::instance()).elements();
    std::vector<std::pair<Role, std::string>> shown;
    for (const auto& element : elements) {
        shown.emplace_back(element.role, element.label);
    }
    EXPECT_EQ(shown, (std::vector<std::pair<Role, std::string>>{{Role::Text, "content"},
                                                                {Role::Button, "Press"},
                                                                {Role::Image, "picture"},
                                                                {Role::Group, "group"},
                                                                {Role::Slider, "volume"}}));
    EXPECT_EQ(elements.back(), (orvane::platform::NSAccessibilityElement{
                                   slider->getId() + 1,
                                   0,
                                   Role::Slider,
                                   {{5, 6}, {7, 8}},
                                   "volume",
                                   "of the music",
                                   "a fifth",
                                   1,
                                   6,
                                   2,
                                   true,
                                   false,
                                   true,
                                   false,
                                   false,
                                   false,
                                   orvane::platform::kNSAccessibilityIncrement}));
    Display::instance()->removeAll();
}

TEST(SessionResources, AreThoseOfTheHost) {
    const TemporaryUser user;
    OffscreenWindow window({80, 60}, 1);
    const Session session(window, "/nowhere", "/resources");
    EXPECT_EQ(orvane::system::getResourceDirectory(), "/resources");
}

}  // namespace
