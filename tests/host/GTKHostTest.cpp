#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "tests/host/HostTest.h"

// Last: their macros break others' headers.
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace orvane::tests {

namespace {

// Changes the host's window from outside, as soon as there is one.
void changeWindow(const std::function<void(Display*, Window)>& change) {
    const std::unique_ptr<Display, decltype(&XCloseDisplay)> display(XOpenDisplay(nullptr),
                                                                     &XCloseDisplay);
    const std::unique_ptr<std::FILE, decltype(&pclose)> search(
        popen("xdotool search --sync --onlyvisible --name Orvane", "r"), &pclose);
    Window window = 0;
    ASSERT_TRUE(display && search && std::fscanf(search.get(), "%lu", &window) == 1);
    change(display.get(), window);
}

// Requests that a window closes, as a window manager does.
void requestClose(Display* display, Window window) {
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.format = 32;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    XSendEvent(display, window, False, NoEventMask, &event);
}

}  // namespace

using GTKHost = HostTest;

TEST_F(GTKHost, ShowsWhatTheOffscreenHostRenders) {
    const std::string events = write("events", "0 down 20 30\n0.1 move 70 80\n0.2 up 120 130\n");
    for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
             {"--size", "500x300"}, {"--scale", "2", "--events", events}}) {
        std::vector<std::string> offscreen = options;
        offscreen.emplace_back("--offscreen");
        const Picture shown = snapshot(options);
        const Picture rendered = snapshot(offscreen);
        EXPECT_TRUE(shown == rendered) << ::testing::PrintToString(options);
    }
}

TEST_F(GTKHost, ReportsAResizeToTheDisplayInPoints) {
    HostProcess host({"--size", "600x400", "--scale", "2", probe});
    ASSERT_TRUE(host.awaitOutput("started 600x400"));
    changeWindow(
        [](Display* display, Window window) { XResizeWindow(display, window, 600, 1000); });
    EXPECT_TRUE(host.awaitOutput("size 300x500 portrait\n"));
    host.sendSignal(SIGTERM);
    EXPECT_EQ(host.finish().exitCode, 0);
}

TEST_F(GTKHost, EndsCleanlyWhenItsWindowIsClosed) {
    HostProcess host({probe});
    changeWindow(requestClose);
    const auto result = host.finish();
    EXPECT_EQ(result.exitCode, 0) << result.errors;
}

TEST_F(GTKHost, WatchStartsWhatWasBuiltInThePlaceOfTheLastWindow) {
    const std::filesystem::path built = ORVANE_TEST_APPLICATIONS;
    // A linker replaces the library, too: writing to one that is in use would crash its process.
    const auto build = [&](const std::string& name) {
        const std::string library = "lib" + name + ".dylib";
        std::filesystem::copy_file(built / name / library, file("new"));
        std::filesystem::rename(file("new"), file(library));
    };
    build("probe");
    HostProcess host({"--watch", "--size", "300x200", file("")});
    ASSERT_TRUE(host.awaitOutput("started 300x200"));
    changeWindow([](Display* display, Window window) {
        XMoveResizeWindow(display, window, 111, 222, 400, 260);
    });
    ASSERT_TRUE(host.awaitOutput("size 400x260"));
    build("probe");
    ASSERT_TRUE(host.awaitOutput("started 400x260"));
    const auto expectPlace = [](Display* display, Window window) {
        Window child = 0;
        int x = 0;
        int y = 0;
        XTranslateCoordinates(display, window, DefaultRootWindow(display), 0, 0, &x, &y, &child);
        EXPECT_EQ(x, 111);
        EXPECT_EQ(y, 222);
    };
    changeWindow(expectPlace);

    build("crash");
    ASSERT_TRUE(host.awaitOutput("crashing\n"));
    // It has no window of its own: this one shows the message.
    changeWindow(expectPlace);
    std::filesystem::remove(file("libcrash.dylib"));
    build("probe");
    ASSERT_TRUE(host.awaitOutput("started 400x260"));
    host.sendSignal(SIGTERM);
    const auto result = host.finish();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(
        result.errors.find("on purpose\norvane-host: the application crashed: Aborted; waiting "
                           "for the next build\n"),
        std::string::npos)
        << result.errors;
}

// Looks at the screen until a pixel has a color, 0xRRGGBB, and acts again while it has not.
bool actUntil(int x, int y, unsigned long color, const std::function<void()>& act) {
    const std::unique_ptr<Display, decltype(&XCloseDisplay)> display(XOpenDisplay(nullptr),
                                                                     &XCloseDisplay);
    for (int attempt = 0; attempt < 20; ++attempt) {
        act();
        std::this_thread::sleep_for(std::chrono::milliseconds(400));
        const std::unique_ptr<XImage, int (*)(XImage*)> image(
            XGetImage(display.get(), DefaultRootWindow(display.get()), x, y, 1, 1, AllPlanes,
                      ZPixmap),
            [](XImage* pixels) { return XDestroyImage(pixels); });
        if (image && (XGetPixel(image.get(), 0, 0) & 0xFFFFFFU) == color) {
            return true;
        }
    }
    return false;
}

void xdotool(const std::string& arguments) {
    ASSERT_EQ(std::system(("xdotool " + arguments).c_str()), 0) << arguments;
}

void click(int x, int y) {
    xdotool("mousemove " + std::to_string(x) + ' ' + std::to_string(y) + " click 1");
}

TEST_F(GTKHost, PaintedObjectsGetTheKeyboardBackFromATextField) {
    HostProcess host({ORVANE_GALLERY_EXAMPLE});
    xdotool("search --sync --onlyvisible --name Orvane windowmove 0 0 windowfocus");
    constexpr unsigned long kLastPicture = 0x2F6FDE;
    EXPECT_TRUE(actUntil(110, 737, kLastPicture, [] {
        xdotool("mousemove 36 214 click 1 sleep 1 mousemove 1000 330 click 1 sleep 0.5 type x");
        xdotool("mousemove 36 382 click 1 sleep 1 mousemove 300 500 click 1 key End sleep 0.5");
    }));
    host.sendSignal(SIGTERM);
    EXPECT_EQ(host.finish().exitCode, 0);
}

TEST_F(GTKHost, InspectsAnApplicationInASecondWindow) {
    HostProcess host({"--inspect", ORVANE_GALLERY_EXAMPLE});
    // Where the inspector's window is, over a corner of the application's.
    constexpr int kLeft = 600;
    constexpr int kTop = 440;
    xdotool("search --sync --onlyvisible --name '^Orvane$' windowmove 0 0");
    xdotool("search --sync --onlyvisible --name inspector windowmove " + std::to_string(kLeft) +
            ' ' + std::to_string(kTop) + " windowfocus");
    constexpr unsigned long kOutline = 0x4C99FF;
    // The page of animations, the search field, and then the second line of the tree.
    click(36, 270);
    click(kLeft + 780, kTop + 25);
    xdotool("type affine");
    EXPECT_TRUE(actUntil(390, 400, kOutline, [&] { click(kLeft + 200, kTop + 121); }));
    // The place of the card is changed in its field.
    EXPECT_TRUE(actUntil(410, 400, kOutline, [&] {
        click(kLeft + 850, kTop + 282);
        xdotool("key ctrl+a type '411 291'");
        xdotool("key Return");
    }));
    // The ground of another card is picked.
    EXPECT_TRUE(actUntil(95, 400, kOutline, [&] {
        click(kLeft + 30, kTop + 25);
        click(115, 420);
    }));
    // The curve of the frames a second.
    EXPECT_TRUE(actUntil(kLeft + 300, kTop + 736, 0x2C5C4E, [] {}));
    host.sendSignal(SIGTERM);
    EXPECT_EQ(host.finish().exitCode, 0);
}

}  // namespace orvane::tests
