#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "orvane/display/native/DisplayView.h"
#include "orvane/driver/Driver.h"
#include "orvane/orvane.h"
#include "platform/appkit/NSDrop.h"
#include "platform/appkit/NSScriptedDesktop.h"
#include "platform/appkit/NSWindow.h"
#include "platform/offscreen/OffscreenWindowHost.h"

namespace {

using namespace orvane::display;
using events::CloseDecision;
using events::DropPhase;
using orvane::driver::Driver;

// Calls a function for each event.
template <typename Event, typename Sender, typename Result>
struct Listening final : Event::listener_type {
    explicit Listening(std::function<Result(const Event&)> function) : heard(std::move(function)) {}
    Result operator()(const std::shared_ptr<Sender>&, const Event& event) override {
        return heard(event);
    }
    std::function<Result(const Event&)> heard;
};

class DesktopTest : public ::testing::Test {
protected:
    Driver driver_{ORVANE_TEST_APPLICATIONS, {.size = {200, 120}}};
    std::shared_ptr<Display> display_ = Display::instance();
    std::vector<std::string> log_;
};

TEST_F(DesktopTest, TheWindowTakesRequestsAndReportsItsState) {
    const auto window = display_->getWindow();
    Listening<events::FullScreenChangedEvent, Window, void> heard(
        [&](const auto& event) { log_.push_back(event.isFullScreen ? "full" : "normal"); });
    const auto listener = std::make_shared<decltype(heard)>(heard);
    window->addListener<events::FullScreenChangedEvent>(listener);
    EXPECT_TRUE(window->setTitle("Grüße"));
    EXPECT_TRUE(window->setApplicationId("org.example.form"));
    EXPECT_TRUE(window->setMinimumSize({100, 50}));
    EXPECT_FALSE(window->setMinimumSize({100, std::nan("")}));
    for (const bool isFull : {true, true, false}) {
        EXPECT_TRUE(window->setFullScreen(isFull));
        EXPECT_EQ(window->isFullScreen(), isFull);
    }
    EXPECT_EQ(driver_.windowHost().title(), "Grüße");
    EXPECT_EQ(driver_.windowHost().applicationIdentifier(), "org.example.form");
    EXPECT_EQ(driver_.windowHost().minimumSize(), (orvane::platform::CGSize{100, 50}));
    EXPECT_EQ(log_, (std::vector<std::string>{"full", "normal"}));
}

TEST_F(DesktopTest, AListenerHoldsTheWindowUntilTheApplicationQuits) {
    const auto window = display_->getWindow();
    using Listener = Listening<events::CloseRequestEvent, Window, CloseDecision>;
    const auto make = [&](CloseDecision decision) {
        auto listener = std::make_shared<Listener>([this, decision](const auto&) {
            log_.emplace_back("asked");
            return decision;
        });
        window->addListener<events::CloseRequestEvent>(listener);
        return listener;
    };
    auto holds = make(CloseDecision::Hold);
    const auto agrees = make(CloseDecision::Close);
    const auto throws = std::make_shared<Listener>(
        [](const auto&) -> CloseDecision { throw std::runtime_error("no decision"); });
    window->addListener<events::CloseRequestEvent>(throws);
    EXPECT_FALSE(driver_.closeWindow());
    EXPECT_FALSE(driver_.windowHost().isClosed());
    EXPECT_EQ(log_.size(), 2U);
    EXPECT_TRUE(window->quit());
    EXPECT_TRUE(driver_.windowHost().isClosed());
    EXPECT_EQ(log_.size(), 2U);
    holds.reset();
    EXPECT_TRUE(window->requestClose());
}

TEST_F(DesktopTest, AnswersComeAfterTheCallAndEndInTheLogIfTheyThrow) {
    using namespace orvane::system;
    const std::string picture = "\x89PNG\r\n\x1a\n and pixels";
    const auto note = [this](const std::string& text) { log_.push_back(text); };
    copyText("copied");
    pasteText(note);
    copyText({});
    pasteText([](const std::string&) { throw std::runtime_error("in a callback"); });
    EXPECT_TRUE(copyPicture(picture));
    EXPECT_FALSE(copyPicture("no picture"));
    pastePicture(note);
    pasteText(note);
    driver_.desktop().answerPanel({"/one", "/two"});
    driver_.desktop().answerPanel({"/three", "/four"});
    const std::vector<FileFilter> filters{{"Pictures", {"*.png", "*.jpg"}}};
    showOpenDialog({.title = "Open", .folder = "/in", .filters = filters, .isForSeveral = true},
                   [&](const auto& paths) { note(std::to_string(paths.size())); });
    showSaveDialog({.title = "Save", .folder = "/out", .name = "a.png", .filters = filters}, note);
    showOpenDialog({.isForFolders = true},
                   [&](const auto& paths) { note(paths.empty() ? "cancelled" : paths[0]); });
    openUrl("https://example.org", [&](bool isOpen) { note(isOpen ? "open" : "not open"); });
    EXPECT_TRUE(log_.empty());
    driver_.step(0);
    EXPECT_EQ(log_, (std::vector<std::string>{"copied", picture, "", "2", "/three", "cancelled",
                                              "open"}));
    using orvane::platform::NSFilePanel;
    const std::vector<NSFilePanel::Filter> shown{{"Pictures", {"*.png", "*.jpg"}}};
    EXPECT_EQ(driver_.desktop().panels(),
              (std::vector<NSFilePanel>{{"Open", "/in", "", shown, false, true},
                                        {"Save", "/out", "a.png", shown, false, false},
                                        {"", "", "", {}, true, false}}));
    EXPECT_EQ(driver_.desktop().openedURLs(), std::vector<std::string>{"https://example.org"});
}

TEST_F(DesktopTest, ANotificationReplacesTheOneWithItsTag) {
    using namespace orvane::system;
    for (const std::string title : {"1 mail", "2 mails"}) {
        showNotification({.title = title, .tag = "mail"}, [&, title] { log_.push_back(title); });
    }
    showNotification({.title = "Ready"});
    EXPECT_EQ(driver_.desktop().notifications().size(), 2U);
    EXPECT_TRUE(driver_.desktop().pressNotification());
    withdrawNotification("");
    withdrawNotification("mail");
    ASSERT_EQ(driver_.desktop().notifications().size(), 1U);
    showNotification({.title = "3 mails", .tag = "mail"}, [&] { log_.emplace_back("3 mails"); });
    EXPECT_TRUE(driver_.desktop().pressNotification());
    EXPECT_EQ(log_, std::vector<std::string>{"3 mails"});
}

TEST_F(DesktopTest, ADropGoesToTheTopmostObjectThatTakesIt) {
    const auto board = DisplayFactory::createContainer();
    std::vector<std::shared_ptr<orvane::notification::AbstractListener>> listeners;
    const auto listen = [&](DisplayObject& object, const std::string& name, bool takes) {
        const auto listener = std::make_shared<Listening<events::DropEvent, DisplayObject, bool>>(
            [this, name, takes](const events::DropEvent& event) {
                const char* const phases[] = {" over", " left", " drop"};
                log_.push_back(name + phases[static_cast<int>(event.phase)] + " " + event.text +
                               (event.files.empty() ? "" : event.files.back()));
                return takes;
            });
        object.addListener<events::DropEvent>(listener);
        listeners.push_back(listener);
    };
    listen(*board, "board", true);
    for (const float x : {0.0F, 50.0F, 100.0F}) {
        const auto card = DisplayFactory::createRect();
        card->set(x, 0, 40, 100);
        card->setFillColor(0xFF336699);
        board->add(card);
        if (x < 100) {
            listen(*card, x == 0 ? "first" : "second", x == 0);
        }
    }
    display_->add(board);
    const auto& children = board->getChildren();
    EXPECT_TRUE(driver_.drop(children[0], {}, "text"));
    EXPECT_TRUE(driver_.drop(children[1], {"/a", "/b"}));
    EXPECT_TRUE(driver_.drop(children[2], {}, "x"));
    EXPECT_EQ(log_, (std::vector<std::string>{"first over text", "first drop text",
                                              "second over /b", "board over /b", "second drop /b",
                                              "board drop /b", "board over x", "board drop x"}));
    log_.clear();
    using orvane::platform::NSDrop;
    using orvane::platform::NSDropPhase;
    auto* const native = display_->getView()->window();
    native->sendDrop({NSDropPhase::Over, {20, 50}});
    native->sendDrop({NSDropPhase::Over, {70, 50}});
    native->sendDrop({NSDropPhase::Left, {}});
    EXPECT_EQ(log_, (std::vector<std::string>{"first over ", "second over ", "board over ",
                                              "first left ", "board left "}));
    EXPECT_FALSE(native->sendDrop({NSDropPhase::Performed, {190, 110}}));
}

TEST_F(DesktopTest, ChangesOfTheAppearanceAreReportedAfterItWasRead) {
    const auto listener = std::make_shared<Listening<AppearanceChangedEvent, Display, void>>(
        [&](const auto& event) { log_.emplace_back(event.appearance.isDark ? "dark" : "light"); });
    display_->addListener<AppearanceChangedEvent>(listener);
    orvane::platform::NSAppearance set;
    set.isDark = true;
    driver_.desktop().setAppearance(set);
    EXPECT_TRUE(log_.empty());
    EXPECT_TRUE(display_->getAppearance().isDark);
    set.isDark = false;
    set.textScale = 1.5;
    driver_.desktop().setAppearance(set);
    driver_.desktop().setAppearance(set);
    EXPECT_EQ(log_, std::vector<std::string>{"light"});
    EXPECT_EQ(display_->getAppearance().textScale, 1.5);
}

}  // namespace
