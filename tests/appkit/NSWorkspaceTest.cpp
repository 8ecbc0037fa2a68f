#include "platform/appkit/NSWorkspace.h"

#include <gtest/gtest.h>

using orvane::platform::NSWorkspace;

TEST(NSWorkspace, RefusesMalformedAddressesAndUnknownSchemes) {
    for (const char* url : {"", "no address", "://", "/usr/bin/true", "\xFF\xFE:x",
                            "orvane-scheme-that-nobody-handles:x"}) {
        EXPECT_FALSE(NSWorkspace::openURL(url)) << url;
    }
}
