#include "platform/appkit/NSScriptedDesktop.h"

#include <algorithm>
#include <utility>

#include "platform/appkit/NSPasteboard.h"
#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSLog.h"

namespace orvane::platform {

namespace {

// Calls the completion when the caller has returned.
template <typename Result>
void answer(std::function<void(Result)> completion, Result result) {
    if (completion) {
        dispatchMainAsync(
            [completion = std::move(completion), result = std::move(result)]() mutable {
                completion(std::move(result));
            });
    }
}

}  // namespace

void NSScriptedDesktop::copyText(const std::string& text) {
    NSPasteboard::generalPasteboard().setString(text);
}

bool NSScriptedDesktop::copyPicture(const std::string& bytes) {
    return NSPasteboard::generalPasteboard().setPicture(bytes);
}

void NSScriptedDesktop::pasteText(std::function<void(std::string)> completion) {
    answer(std::move(completion), NSPasteboard::generalPasteboard().string());
}

void NSScriptedDesktop::pastePicture(std::function<void(std::string)> completion) {
    answer(std::move(completion), NSPasteboard::generalPasteboard().picture());
}

std::vector<std::string> NSScriptedDesktop::takeAnswer(const NSFilePanel& panel) {
    panels_.push_back(panel);
    if (answers_.empty()) {
        NSLog("The dialog '%s' is cancelled: the script has no answer for it", panel.title.c_str());
        return {};
    }
    std::vector<std::string> paths = std::move(answers_.front());
    answers_.pop_front();
    if (!panel.choosesSeveral && paths.size() > 1) {
        paths.resize(1);
    }
    return paths;
}

void NSScriptedDesktop::runOpenPanel(const NSFilePanel& panel,
                                     std::function<void(std::vector<std::string>)> completion) {
    answer(std::move(completion), takeAnswer(panel));
}

void NSScriptedDesktop::runSavePanel(const NSFilePanel& panel,
                                     std::function<void(std::string)> completion) {
    const std::vector<std::string> paths = takeAnswer(panel);
    answer(std::move(completion), paths.empty() ? std::string() : paths.front());
}

void NSScriptedDesktop::openURL(const std::string& url, std::function<void(bool)> completion) {
    openedURLs_.push_back(url);
    answer(std::move(completion), true);
}

void NSScriptedDesktop::deliver(const NSUserNotification& notification,
                                std::function<void()> pressed) {
    withdraw(notification.tag);
    shown_.push_back({notification, std::move(pressed)});
}

void NSScriptedDesktop::withdraw(const std::string& tag) {
    if (!tag.empty()) {
        std::erase_if(shown_, [&tag](const Shown& shown) { return shown.notification.tag == tag; });
    }
}

void NSScriptedDesktop::answerPanel(std::vector<std::string> paths) {
    answers_.push_back(std::move(paths));
}

void NSScriptedDesktop::setAppearance(const NSAppearance& appearance) {
    if (appearance != appearance_) {
        appearance_ = appearance;
        appearanceDidChange();
    }
}

bool NSScriptedDesktop::pressNotification() {
    if (shown_.empty()) {
        return false;
    }
    const std::function<void()> pressed = shown_.back().pressed;
    if (pressed) {
        pressed();
    }
    return true;
}

std::vector<NSUserNotification> NSScriptedDesktop::notifications() const {
    std::vector<NSUserNotification> notifications;
    for (const Shown& shown : shown_) {
        notifications.push_back(shown.notification);
    }
    return notifications;
}

}  // namespace orvane::platform
