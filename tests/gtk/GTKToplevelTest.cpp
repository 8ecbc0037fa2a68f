#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <cstdio>
#include <string>

#include "platform/appkit/NSDesktop.h"
#include "platform/appkit/NSWindowHost.h"
#include "platform/gtk/GTKToplevel.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

using platform::GTKToplevel;
using platform::NSDesktop;

namespace {

// The properties that a window manager sees.
std::string propertiesOf(const std::string& title) {
    std::string text;
    FILE* const pipe = popen(("xprop -name " + title +
                              " WM_CLASS _NET_WM_NAME WM_NORMAL_HINTS "
                              "_NET_WM_ICON 2>&1")
                                 .c_str(),
                             "r");
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
        text += static_cast<char>(c);
    }
    pclose(pipe);
    return text;
}

struct Delegate : platform::NSWindowDelegate {
    bool windowShouldClose() override { return mayClose; }
    void windowDidChangeFullScreen() override {}
    bool mayClose = false;
};

// A red pixel.
constexpr unsigned char kPicture[] = {
    0x89, 'P',  'N',  'G',  0x0d, 0x0a, 0x1a, 0x0a, 0,    0,    0,    0x0d, 'I',  'H',
    'D',  'R',  0,    0,    0,    1,    0,    0,    0,    1,    8,    2,    0,    0,
    0,    0x90, 0x77, 0x53, 0xde, 0,    0,    0,    0x0c, 'I',  'D',  'A',  'T',  0x08,
    0xd7, 0x63, 0xf8, 0xcf, 0xc0, 0,    0,    0x03, 0x01, 0x01, 0,    0x18, 0xdd, 0x8d,
    0xb0, 0,    0,    0,    0,    'I',  'E',  'N',  'D',  0xae, 0x42, 0x60, 0x82};
const std::string picture(reinterpret_cast<const char*>(kPicture), sizeof kPicture);

}  // namespace

TEST_F(WindowTest, AToplevelGivesTheContentItsWindow) {
    int closed = 0;
    GTKToplevel toplevel(window_.toplevel(), window_.window(), [&] { ++closed; });
    Delegate delegate;
    window_.window().setDelegate(&delegate);
    platform::NSWindowHost& host = window_.window().host();
    EXPECT_FALSE(host.setApplicationIdentifier("org.example.late"));
    EXPECT_TRUE(host.setTitle("Before"));
    EXPECT_FALSE(host.setTitle("\xff"));
    EXPECT_TRUE(host.setIcon(picture));
    EXPECT_FALSE(host.setIcon("no picture"));
    window_.show();
    EXPECT_TRUE(host.setTitle("Board"));
    EXPECT_TRUE(host.setMinimumSize({700, 0}));
    window_.show();
    const std::string properties = propertiesOf("Board");
    EXPECT_NE(properties.find("Icon (1 x 1)"), std::string::npos) << properties;
    EXPECT_GE(window_.window().contentSize().width, 700);

    gtk_window_close(window_.toplevel().gobj());
    EXPECT_FALSE(desktop::runUntil([&] { return closed > 0; }, 0.2));
    delegate.mayClose = true;
    gtk_window_close(window_.toplevel().gobj());
    EXPECT_TRUE(desktop::runUntil([&] { return closed == 1; }));
    window_.window().setDelegate(nullptr);
}

TEST_F(WindowTest, AToplevelGivesItsWindowTheApplicationId) {
    platform::GTKWindow content({100, 100});
    Gtk::Window window;
    GTKToplevel toplevel(window, content, [] {});
    EXPECT_TRUE(content.host().setApplicationIdentifier("org.example.board"));
    EXPECT_TRUE(content.host().setTitle("Identified"));
    window.present();
    const std::string expected = "\"org.example.board\", \"org.example.board\"";
    EXPECT_TRUE(desktop::runUntil(
        [&] { return propertiesOf("Identified").find(expected) != std::string::npos; }));
}

TEST_F(WindowTest, TheClipboardIsTheDesktops) {
    window_.show();
    std::string text;
    std::string bytes;
    NSDesktop& services = NSDesktop::current();
    services.copyText("Grüße");
    services.pasteText([&](const std::string& pasted) { text = pasted; });
    EXPECT_TRUE(desktop::runUntil([&] { return text == "Grüße"; }));
    EXPECT_FALSE(services.copyPicture("no picture"));
    EXPECT_TRUE(services.copyPicture(picture));
    services.pasteText([&](const std::string& pasted) { text = pasted; });
    services.pastePicture([&](const std::string& pasted) { bytes = pasted; });
    EXPECT_TRUE(desktop::runUntil([&] { return text.empty() && bytes.starts_with("\x89PNG"); }));
}

}  // namespace orvane::tests
