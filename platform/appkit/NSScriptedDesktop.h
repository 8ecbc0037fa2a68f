#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSDesktop.h"

namespace orvane::platform {

// A desktop in memory, for windows without a screen and for tests: its clipboard is NSPasteboard,
// its dialogs are answered in advance, and it keeps what it was asked to show. Main thread only.
class ORVANE_EXPORT NSScriptedDesktop final : public NSDesktop {
public:
    // The services of NSDesktop:
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
    NSAppearance appearance() override { return appearance_; }

    // ---- what the user does ----
    // Answers the next dialog that has no answer yet; a dialog for one file takes the first path. A
    // dialog without an answer is cancelled, with one line in the log.
    void answerPanel(std::vector<std::string> paths);
    // Changes how the user wants programs to look.
    void setAppearance(const NSAppearance& appearance);
    // Presses the notification that was shown last. Returns false if there is none.
    bool pressNotification();

    // ---- what the application has done ----
    // The oldest first.
    const std::vector<std::string>& openedURLs() const { return openedURLs_; }
    // The dialogs for files that were shown, the oldest first.
    const std::vector<NSFilePanel>& panels() const { return panels_; }
    // What is shown, the oldest first.
    std::vector<NSUserNotification> notifications() const;

private:
    struct Shown {
        NSUserNotification notification;
        std::function<void()> pressed;
    };

    // Records the dialog as shown.
    std::vector<std::string> takeAnswer(const NSFilePanel& panel);

    std::deque<std::vector<std::string>> answers_;
    std::vector<std::string> openedURLs_;
    std::vector<NSFilePanel> panels_;
    std::vector<Shown> shown_;
    NSAppearance appearance_;
};

}  // namespace orvane::platform
