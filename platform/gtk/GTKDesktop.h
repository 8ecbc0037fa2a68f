#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/appkit/NSDesktop.h"

typedef struct _GDBusConnection GDBusConnection;
typedef struct _GVariant GVariant;
typedef struct _GtkWidget GtkWidget;

namespace orvane::platform {

// The services of a desktop of freedesktop.org, for the windows of GTK: its clipboard, its dialogs,
// its programs for addresses, the daemon for notifications, and the settings of GTK and of the
// desktop's portal. It opens the session bus with the first notification and the first question for
// the appearance. Main thread only.
class GTKDesktop final : public NSDesktop {
public:
    // The widget in whose window dialogs belong; borrowed.
    explicit GTKDesktop(GtkWidget* widget) : widget_(widget) {}
    ~GTKDesktop() override;

    void copyText(const std::string& text) override;
    bool copyPicture(const std::string& bytes) override;
    void pasteText(std::function<void(std::string)> completion) override;
    void pastePicture(std::function<void(std::string)> completion) override;
    void runOpenPanel(const NSFilePanel& panel,
                      std::function<void(std::vector<std::string>)> completion) override;
    void runSavePanel(const NSFilePanel& panel,
                      std::function<void(std::string)> completion) override;
    void openURL(const std::string& url, std::function<void(bool)> completion) override;
    void deliver(const NSUserNotification& notification, std::function<void()> pressed) override;
    void withdraw(const std::string& tag) override;
    NSAppearance appearance() override;

private:
    // A notification that is shown.
    struct Shown {
        std::string tag;
        std::function<void()> pressed;
    };

    // Null, with one line in the log the first time, if there is no session bus.
    GDBusConnection* bus();
    void watchAppearance();
    void readPortal();
    void takeSetting(const char* key, GVariant* value);
    void hearFromDaemon(const std::string& signal, GVariant* arguments);

    GtkWidget* widget_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>();
    GDBusConnection* bus_ = nullptr;
    bool isBusMissing_ = false;
    unsigned int portalSubscription_ = 0;
    unsigned int daemonSubscription_ = 0;
    unsigned long settingsHandler_ = 0;
    bool watchesAppearance_ = false;
    // What the portal says; negative for nothing.
    int portalScheme_ = -1;
    int portalMotion_ = -1;
    std::uint32_t portalAccent_ = 0;
    std::map<std::uint32_t, Shown> shown_;
    NSAppearance lastAppearance_;
};

}  // namespace orvane::platform
