#include "platform/appkit/NSWorkspace.h"

#include <gtest/gtest.h>

#include "platform/appkit/NSScriptedDesktop.h"

using orvane::platform::NSDesktop;
using orvane::platform::NSWorkspace;

TEST(NSDesktop, IsTheOneInMemoryUntilAnotherIsSet) {
    EXPECT_FALSE(NSDesktop::hasCurrent());
    NSDesktop* const inMemory = &NSDesktop::current();
    {
        orvane::platform::NSScriptedDesktop desktop;
        NSDesktop::setCurrent(&desktop);
        EXPECT_TRUE(NSDesktop::hasCurrent());
        EXPECT_EQ(&NSDesktop::current(), &desktop);
    }
    EXPECT_FALSE(NSDesktop::hasCurrent()) << "it is gone";
    EXPECT_EQ(&NSDesktop::current(), inMemory);
}

TEST(NSWorkspace, RefusesMalformedAddressesAndUnknownSchemes) {
    for (const char* url : {"", "no address", "://", "/usr/bin/true", "\xFF\xFE:x",
                            "orvane-scheme-that-nobody-handles:x"}) {
        EXPECT_FALSE(NSWorkspace::openURL(url)) << url;
    }
}
