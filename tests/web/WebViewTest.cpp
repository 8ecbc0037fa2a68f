#include <gtest/gtest.h>
#include <webkit/webkit.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <numbers>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "orvane/embedding/Session.h"
#include "orvane/orvane.h"
#include "orvane/services/families.h"
#include "tests/gtk/TestWindow.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/urlsession/TestServer.h"

// Pages in a window, against the shared libraries.
namespace orvane::tests {

namespace {

using display::native::NWebView;
using services::ServiceFailure;

constexpr std::uint32_t kRed = 0xE01010;
constexpr std::uint32_t kBlue = 0x1010E0;
// The left half is red, the right half blue.
constexpr const char* kHalves =
    "<title>Halves</title><body style='margin:0;background:#1010E0'>"
    "<div style='background:#E01010;width:50vw;height:100vh'>";

GtkWidget* findWebView(GtkWidget* widget) {
    if (WEBKIT_IS_WEB_VIEW(widget) != FALSE) {
        return widget;
    }
    for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
         child = gtk_widget_get_next_sibling(child)) {
        if (GtkWidget* const found = findWebView(child)) {
            return found;
        }
    }
    return nullptr;
}

// A web view of an application, and what it reports.
class WebView : public testing::Test {
protected:
    WebView() {
        view_->setBounds({0, 0, 200, 100});
        view_->setTranslate(100, 100);
        listeners_.add<NWebView::ChangeEvent>(*view_, [this](const auto&) {
            ++changes_;
            title_ = view_->getTitle();
        });
        listeners_.add<NWebView::LoadEvent>(*view_, [this](const NWebView::LoadEvent& event) {
            static constexpr const char* kPhases[] = {"started ", "committed ", "finished ",
                                                      "failed ", "stopped "};
            log_ += kPhases[static_cast<int>(event.phase)];
            failure_ = event.failure;
        });
        listeners_.add<NWebView::CrashEvent>(*view_, [this](const auto&) { log_ += "crash "; });
    }

    void SetUp() override {
        static const bool hasSandbox =
            std::system("bwrap --unshare-all --ro-bind / / --dev /dev --proc /proc true") == 0;
        if (!hasSandbox && std::getenv("ORVANE_TEST_WITHOUT_ENGINE") == nullptr) {
            GTEST_SKIP() << "this machine forbids the sandbox of the pages' processes";
        }
    }

    void show() {
        display::Display::instance()->add(view_);
        window_.show();
    }
    // Runs the main loop until a word was reported.
    bool wait(const std::string& word) {
        return desktop::runUntil([&] { return log_.find(word) != std::string::npos; });
    }
    // Runs an action, until the page that it loads is there.
    void loading(const std::function<void()>& action) {
        log_.clear();
        action();
        ASSERT_TRUE(wait("finished")) << log_;
    }
    void loadHtml(const std::string& html, const std::string& base = {}) {
        loading([&] { view_->loadHtml(html, base); });
    }
    void load(const std::string& address) {
        loading([&] { view_->load(address); });
    }
    NWebView::ScriptResult run(const std::string& script) {
        std::optional<NWebView::ScriptResult> result;
        view_->runScript(script, [&](const auto& outcome) { result = outcome; });
        EXPECT_TRUE(desktop::runUntil([&] { return result.has_value(); })) << script;
        return result.value_or(NWebView::ScriptResult{});
    }
    // Whether points of the screen get these colors.
    struct Place {
        int x, y;
        std::uint32_t color;
    };
    testing::AssertionResult shows(const std::vector<Place>& places) {
        std::string colors;
        const bool isShown = desktop::runUntil([&] {
            const Picture screen = desktop::screenshot(600, 400);
            bool isRight = true;
            std::ostringstream text;
            for (const Place& place : places) {
                const std::uint32_t color = screen.at(place.x, place.y);
                isRight = isRight && color == place.color;
                text << std::hex << color << " ";
            }
            colors = text.str();
            return isRight;
        });
        return (isShown ? testing::AssertionSuccess() : testing::AssertionFailure()) << colors;
    }
    // Runs the main loop until the log, which is captured, contains a text.
    static bool logs(const std::string& text) {
        std::string log;
        return desktop::runUntil([&] {
            log += testing::internal::GetCapturedStderr();
            testing::internal::CaptureStderr();
            return log.find(text) != std::string::npos;
        });
    }

    TestWindow window_{{600, 400}};
    embedding::Session session_{window_.window(), "/nowhere"};
    std::shared_ptr<NWebView> view_ = display::DisplayFactory::createWebView();
    std::string log_;
    std::string title_;
    int changes_ = 0;
    std::optional<ServiceFailure> failure_;
    notification::Listeners listeners_;
};

// With pages of a server: what their targets are, and their bodies.
class WebViewOfServer : public WebView {
protected:
    TestServer server_{[](const TestServer::Request& request, TestServer::Connection& connection) {
        const std::string html = "Content-Type: text/html\r\n";
        if (request.target == "/file.zip") {
            connection.answer(200, "PK", "Content-Type: application/zip\r\n");
        } else if (request.target == "/attached") {
            connection.answer(200, "text", html + "Content-Disposition: attachment\r\n");
        } else if (request.target == "/away") {
            connection.close();
        } else if (request.target == "/never") {
            connection.stall();
        } else {
            connection.answer(200, "<title>Page " + request.target + "</title>", html);
        }
    }};
};

}  // namespace

TEST_F(WebView, ShowsAPageWhereverItsLayerIs) {
    show();
    view_->loadHtml(kHalves);
    ASSERT_TRUE(wait("finished"));
    EXPECT_EQ(log_, "started committed finished ");
    ASSERT_TRUE(desktop::runUntil([&] { return title_ == "Halves"; }));  // often comes last
    EXPECT_EQ(view_->getProgress(), 1);
    EXPECT_FALSE(view_->isLoading());
    EXPECT_TRUE(shows({{110, 150, kRed}, {190, 110, kRed}, {210, 190, kBlue}, {290, 110, kBlue}}));
    // A scaled object has a scaled page: half of its width is red, as before.
    view_->setScale(2, 2);
    EXPECT_TRUE(shows({{10, 190, kRed}, {190, 10, kRed}, {210, 190, kBlue}, {390, 10, kBlue}}));
    EXPECT_EQ(run("innerWidth").json, "200");
    // A layer can turn: by a quarter, about its corner. Then (x, y) is at (300 - y, 100 + x).
    view_->setTranslate(300, 100);
    window_.show();
    view_->getObjectHandler()->layer()->setTransform(rotation(std::numbers::pi / 2));
    EXPECT_TRUE(shows({{290, 110, kRed}, {210, 190, kRed}, {290, 210, kBlue}, {210, 290, kBlue}}));
    std::string place;
    view_->setMessageHandler("place", [&](const auto& message) { place = message.json; });
    run("onclick = event => webkit.messageHandlers.place.postMessage([event.x, event.y])");
    desktop::xdotool("mousemove 210 120 click 1");
    EXPECT_TRUE(desktop::runUntil([&] { return !place.empty(); }));
    EXPECT_TRUE(place == "[20,90]" || place == "[20,89]") << place;  // WebKit cuts the fraction off
}

TEST_F(WebView, LoadsRunsAndIsPicturedWithoutAWindow) {
    view_->setZoom(2);
    loadHtml(kHalves);
    std::string png;
    view_->takeSnapshot([&](const std::string& bytes) { png = bytes; });
    ASSERT_TRUE(desktop::runUntil([&] { return !png.empty(); }));
    const auto image = display::DisplayFactory::createImage();
    image->setContent(png);
    EXPECT_EQ(image->getBounds().width, 200);
    EXPECT_EQ(run("[document.title, innerWidth]").json, R"(["Halves",100])");
    // Its page survives the window.
    run("var kept = 7");
    show();
    EXPECT_TRUE(shows({{110, 150, kRed}, {290, 150, kBlue}}));
    display::Display::instance()->remove(view_);
    window_.show();
    show();
    EXPECT_EQ(run("kept").json, "7");
}

TEST_F(WebView, RunsScriptsAndSaysWhereTheyAreWrong) {
    loadHtml("<script>\nfunction broken() {\n  absent();\n}</script>");
    const struct {
        const char* script;
        const char* json;
        const char* error;
        int line;
    } cases[] = {{"1 + 1", "2", "", 0},
                 {"({a: [1, 'x: 3:4: y']})", R"({"a":[1,"x: 3:4: y"]})", "", 0},
                 {"undefined", "", "", 0},
                 {"\n\nthrow new Error('oops')", "", "Error: oops", 3},
                 {"throw ': 3:4: x'", "", ": 3:4: x", 1},
                 {"x y", "", "SyntaxError: Unexpected identifier 'y'", 1},
                 {"broken()", "", "ReferenceError: Can't find variable: absent", 3},
                 {"document.body", "", "Unsupported result type", 0}};
    for (const auto& [script, json, error, line] : cases) {
        const NWebView::ScriptResult result = run(script);
        EXPECT_EQ(result.json, json) << script;
        EXPECT_EQ(result.error ? result.error->message : "", error) << script;
        EXPECT_EQ(result.error ? result.error->line : 0, line) << script;
    }
}

TEST_F(WebView, HearsOnlyTheMessagesThatTheApplicationWants) {
    std::string messages;
    const auto hear = [&](const NWebView::Message& message) {
        messages += message.json + "@" + message.address + " ";
        throw std::runtime_error("a handler's mistake");
    };
    view_->setMessageHandler("first", hear);
    view_->setMessageHandler("no name", hear);
    loadHtml(
        "<script>function send(to, what) { webkit.messageHandlers[to].postMessage(what) }"
        "send('first', {a: 1})</script>",
        "http://example.org/");
    view_->setMessageHandler("second", hear);  // also for a page that is shown already
    EXPECT_NE(run("send('no name', 2)").error, std::nullopt);
    testing::internal::CaptureStderr();
    run("send('first', 'x'.repeat(1 << 21))");
    run("send('second', 3)");
    ASSERT_TRUE(desktop::runUntil([&] { return messages.find('3') != std::string::npos; }));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("A message of a page for 'first'"),
              std::string::npos);
    EXPECT_EQ(messages, "{\"a\":1}@http://example.org/ 3@http://example.org/ ");
    view_->setMessageHandler("first", {});
    EXPECT_NE(run("send('first', 4)").error, std::nullopt);
}

TEST_F(WebView, HasTheKeyboardAndTheWheelWhereThePointerIs) {
    show();
    desktop::focus(window_.toplevel());
    loadHtml("<body style='margin:0;height:2000px'><input id=a style='width:100px'><input id=b>");
    desktop::xdotool("mousemove 120 110 click 1");
    EXPECT_TRUE(
        desktop::runUntil([&] { return run("document.activeElement.id").json == "\"a\""; }));
    desktop::xdotool("type x");
    EXPECT_TRUE(desktop::runUntil([&] { return run("a.value").json == "\"x\""; }));
    desktop::xdotool("key Tab type y");
    EXPECT_TRUE(desktop::runUntil([&] { return run("b.value").json == "\"y\""; }));
    EXPECT_EQ(display::Display::instance()->getFocus(), view_);
    desktop::xdotool("click 5");
    EXPECT_TRUE(desktop::runUntil([&] { return run("scrollY > 0").json == "true"; }));
}

TEST_F(WebViewOfServer, GoesBackAndForward) {
    load(server_.url("/a"));
    EXPECT_FALSE(view_->canGoBack());
    load(server_.url("/b"));
    ASSERT_TRUE(view_->canGoBack());
    loading([&] { view_->goBack(); });
    EXPECT_EQ(view_->getAddress(), server_.url("/a"));
    ASSERT_TRUE(view_->canGoForward());
    loading([&] { view_->goForward(); });
    EXPECT_EQ(view_->getAddress(), server_.url("/b"));
    EXPECT_FALSE(view_->canGoForward());
}

TEST_F(WebViewOfServer, SaysWhyALoadFails) {
    load(server_.url("/kept"));
    const struct {
        std::string address;
        const char* phases;
    } cases[] = {{server_.url("/away"), "started failed "},
                 {"file:///no/such/file", "started failed "},
                 {"unknown://scheme", "started failed "},
                 {"no address", "failed "},
                 {"javascript:document.title='x'", "failed "},
                 // Answers that are no pages.
                 {server_.url("/file.zip"), "started stopped "},
                 {server_.url("/attached"), "started stopped "}};
    for (const auto& [address, phases] : cases) {
        log_.clear();
        const int changes = changes_;
        view_->load(address);
        EXPECT_TRUE(log_.empty() && changes_ == changes) << "not before the call has returned";
        EXPECT_TRUE(desktop::runUntil([&] { return log_ == phases; })) << address << ": " << log_;
        EXPECT_EQ(failure_.has_value(), log_.ends_with("failed ")) << address;
    }
    log_.clear();
    view_->load(server_.url("/never"));
    ASSERT_TRUE(wait("started"));
    view_->stop();
    EXPECT_TRUE(wait("stopped"));
    EXPECT_EQ(run("document.title").json, "\"Page /kept\"");
}

TEST_F(WebViewOfServer, AsksTheApplicationWhereAPageMayGo) {
    load(server_.url("/start"));
    // Without a policy: no windows.
    run("open('/window')");
    run("1");
    EXPECT_EQ(view_->getAddress(), server_.url("/start"));
    std::string asked;
    view_->setNavigationPolicy([&](const NWebView::Navigation& navigation) {
        asked += navigation.address.substr(navigation.address.rfind('/')) +
                 (navigation.opensWindow ? "+ " : " ");
        return navigation.address.find("denied") == std::string::npos;
    });
    run("location = '/denied'");
    EXPECT_TRUE(desktop::runUntil([&] { return !asked.empty(); }));
    loading([&] { run("location = '/allowed'"); });
    EXPECT_EQ(view_->getAddress(), server_.url("/allowed"));
    loading([&] {
        run("const a = document.createElement('a'); a.target = '_blank'; a.href = '/window';"
            "document.body.append(a); a.click()");
    });
    EXPECT_EQ(view_->getAddress(), server_.url("/window"));
    EXPECT_EQ(asked, "/denied /allowed /window+ /window ");
    asked.clear();
    view_->setNavigationPolicy([&](const NWebView::Navigation&) -> bool {
        asked = "asked";
        throw std::runtime_error("a policy's mistake");
    });
    run("location = '/thrown'");
    EXPECT_TRUE(desktop::runUntil([&] { return !asked.empty(); }));
    EXPECT_EQ(run("location.pathname").json, "\"/window\"");
}

TEST_F(WebView, ShowsFilesOnlyBelowThoseThatWereLoaded) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.path() / "pages" / "sub");
    for (const char* const name : {"pages/a.html", "pages/sub/b.html", "secret.html"}) {
        std::ofstream(folder.path() / name) << "<title>" << name << "</title>";
    }
    loading([&] { view_->loadFile(folder.path() / "pages/a.html"); });
    loading([&] { run("location = 'sub/b.html'"); });
    testing::internal::CaptureStderr();
    for (const char* const place : {"../../secret.html", "../%2e%2e/secret.html", "/etc/passwd"}) {
        run("location = '" + std::string(place) + "'");
        EXPECT_TRUE(logs("A page may not show the file")) << place;
    }
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(run("document.title").json, "\"pages/sub/b.html\"");
    loading([&] { view_->goBack(); });
}

TEST_F(WebView, FindsTextAndZooms) {
    show();
    loadHtml("<body>Needle, needle and NEEDLE<p style='margin-top:900px'>needle");
    std::optional<std::size_t> count;
    const auto count_ = [&](std::size_t found) { count = found; };
    view_->find("nothing", [](std::size_t) { FAIL() << "a search that was replaced"; });
    for (const auto& [text, expected] : {std::pair{"needle", 4U}, {"hay", 0U}, {"needle", 4U}}) {
        count.reset();
        view_->find(text, count_);
        ASSERT_TRUE(desktop::runUntil([&] { return count.has_value(); })) << text;
        EXPECT_EQ(count, expected) << text;
    }
    view_->findPrevious();  // from the first place to the last one
    EXPECT_TRUE(desktop::runUntil([&] { return run("scrollY > 100").json == "true"; }));
    view_->findNext();
    EXPECT_TRUE(desktop::runUntil([&] { return run("scrollY").json == "0"; }));
    view_->endFind();
    view_->setZoom(2);
    EXPECT_TRUE(desktop::runUntil([&] { return run("innerWidth").json == "100"; }));
    view_->setZoom(1000);
    EXPECT_EQ(view_->getZoom(), 5);
}

TEST_F(WebViewOfServer, RefusesWhatPagesDoNotGet) {
    view_->setPersistent(true);
    load(server_.url("/a"));
    EXPECT_TRUE(std::filesystem::exists(system::getCachesDirectory() + "/web/data"));
    testing::internal::CaptureStderr();
    view_->setPersistent(false);
    EXPECT_TRUE(logs("setPersistent was refused"));
    show();  // a page that is not visible waits with its wishes
    run("navigator.geolocation.getCurrentPosition(() => 0, error => document.title = error.code)");
    EXPECT_TRUE(logs("was refused its position"));
    EXPECT_TRUE(desktop::runUntil([&] { return view_->getTitle() == "1"; }));  // denied
    run("const a = document.createElement('a'); a.download = 'b'; a.href = '/b';"
        "document.body.append(a); a.click()");
    EXPECT_TRUE(logs("/b was refused"));
    testing::internal::GetCapturedStderr();
}

TEST_F(WebViewOfServer, ReloadsAfterACrash) {
    show();
    load(server_.url("/a"));
    webkit_web_view_terminate_web_process(
        WEBKIT_WEB_VIEW(findWebView(GTK_WIDGET(window_.toplevel().gobj()))));
    ASSERT_TRUE(wait("crash"));
    loading([&] { view_->reload(); });
    EXPECT_EQ(run("document.title").json, "\"Page /a\"");
}

TEST_F(WebView, CanBeDestroyedByWhatItReports) {
    for (const bool byPolicy : {true, false}) {
        auto view = display::DisplayFactory::createWebView();
        notification::Listeners listeners;
        bool isCalled = false;
        const auto destroy = [&] {
            isCalled = true;
            view->runScript("1", [](const auto&) { FAIL() << "the object was destroyed"; });
            view.reset();
        };
        if (byPolicy) {
            view->setNavigationPolicy([&](const auto&) {
                destroy();
                return true;
            });
        } else {
            listeners.add<NWebView::LoadEvent>(*view, [&](const auto&) { destroy(); });
        }
        view->loadHtml(kHalves, "http://example.org/");
        EXPECT_TRUE(desktop::runUntil([&] { return isCalled; }));
    }
    // The main loop is empty of what they have begun.
    loadHtml(kHalves);
}

// Where there is no engine: the test's environment says what the log says, and the reason.
TEST_F(WebView, WithoutAnEngineItShowsTheAddress) {
    const char* const expected = std::getenv("ORVANE_TEST_WITHOUT_ENGINE");
    if (expected == nullptr) {
        GTEST_SKIP() << "there is an engine";
    }
    const bool isDenied = std::string(expected).find("denies") != std::string::npos;
    if (isDenied) {
        services::denyFamily(services::Family::Web);
    }
    testing::internal::CaptureStderr();
    show();
    const Picture before = window_.picture();
    view_->load("https://example.org/");
    EXPECT_TRUE(wait("failed"));
    EXPECT_EQ(failure_ ? failure_->reason : ServiceFailure::Reason::Failed,
              isDenied ? ServiceFailure::Reason::Denied : ServiceFailure::Reason::Unavailable);
    std::optional<ServiceFailure> failure;
    view_->runScript(
        "1", [](const auto&) { FAIL(); }, [&](const auto& reason) { failure = reason; });
    EXPECT_FALSE(failure.has_value());
    EXPECT_TRUE(desktop::runUntil([&] { return failure.has_value(); }));
    EXPECT_GT(countDifferences(before, window_.picture(), 8), 50) << "the address";
    const std::string log = testing::internal::GetCapturedStderr();
    const std::size_t first = log.find("A web page is not shown: ");
    ASSERT_NE(first, std::string::npos) << log;
    EXPECT_NE(log.find(expected), std::string::npos) << log;
    EXPECT_EQ(log.find("A web page is not shown: ", first + 1), std::string::npos) << log;
}

}  // namespace orvane::tests
