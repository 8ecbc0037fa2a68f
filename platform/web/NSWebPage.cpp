#include "platform/web/NSWebPage.h"

#include <glib.h>

#include <algorithm>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/appkit/NSGraphicsContext.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/foundation/NSLog.h"
#include "platform/web/NSWebPagePicture.h"

namespace orvane::platform {

namespace {

constexpr std::size_t kMostLogged = 200;       // bytes of an address
constexpr std::size_t kMostMessage = 1 << 20;  // bytes of JSON

constexpr CGSize kDefaultSize{800, 600};

NSWebPage::CreateEngine& engineSource() {
    static NSWebPage::CreateEngine source;
    return source;
}

std::string schemeOf(const std::string& address) {
    const char* const scheme = g_uri_peek_scheme(address.c_str());
    return scheme != nullptr ? scheme : "";
}

// The path of a file's address; nothing for another address. It has no "..".
std::optional<std::filesystem::path> pathOf(const std::string& address) {
    const std::string withoutPlace = address.substr(0, address.find_first_of("?#"));
    char* const path = g_filename_from_uri(withoutPlace.c_str(), nullptr, nullptr);
    if (path == nullptr) {
        return {};
    }
    std::filesystem::path result = std::filesystem::path(path).lexically_normal();
    g_free(path);
    return result;
}

// The title in a text in HTML, for the picture of it; empty if there is none.
std::string titleIn(const std::string& html) {
    constexpr std::string_view tag = "<title>";
    const std::size_t begin = html.find(tag);
    const std::size_t end = html.find("</title>", begin);
    if (begin == std::string::npos || end == std::string::npos) {
        return {};
    }
    return html.substr(begin + tag.size(), end - begin - tag.size());
}

bool isName(const std::string& name) {
    return !name.empty() && g_ascii_isdigit(name.front()) == FALSE &&
           std::ranges::all_of(name,
                               [](char c) { return g_ascii_isalnum(c) != FALSE || c == '_'; });
}

}  // namespace

std::string shownAddress(const std::string& address) {
    if (address.empty()) {
        return "without an address";
    }
    if (address.size() <= kMostLogged) {
        return address;
    }
    return address.substr(0, kMostLogged) + "...";
}

std::string fileAddress(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    char* const uri = g_filename_to_uri(absolute.c_str(), nullptr, nullptr);
    std::string address = uri != nullptr ? uri : "";
    g_free(uri);
    return address;
}

NSWebPage::NSWebPage() = default;
NSWebPage::~NSWebPage() = default;

void NSWebPage::setEngineSource(CreateEngine create) {
    engineSource() = std::move(create);
}

void NSWebPage::setHandlers(Handlers handlers) {
    handlers_ = std::move(handlers);
}

NSWebEngine* NSWebPage::engine() {
    if (!engine_ && hasWidgets(kKind) && engineSource()) {
        engine_ = engineSource()(*this);
    }
    return engine_.get();
}

// ---- what the application sets ----

bool NSWebPage::setDataFolder(const std::string& path) {
    if (!engine_) {
        dataFolder_ = path;
    }
    return !engine_;
}

CGSize NSWebPage::pageSize() const {
    for (const CGSize size : {bounds().size, wantedSize_}) {
        if (size.width >= 1 && size.height >= 1) {
            return size;
        }
    }
    return kDefaultSize;
}

void NSWebPage::setZoom(double zoom) {
    if (std::exchange(zoom_, zoom) != zoom && engine_) {
        engine_->setZoom(zoom_);
    }
}

bool NSWebPage::addMessageHandler(const std::string& name) {
    if (!isName(name)) {
        NSLog("NSWebPage: the message handler '%s' was refused: no name of JavaScript",
              shownAddress(name).c_str());
        return false;
    }
    if (messageHandlers_.insert(name).second && engine_) {
        engine_->setMessageHandler(name, true);
    }
    return true;
}

void NSWebPage::removeMessageHandler(const std::string& name) {
    if (messageHandlers_.erase(name) > 0 && engine_) {
        engine_->setMessageHandler(name, false);
    }
}

void NSWebPage::setPolicy(std::function<bool(const NSWebNavigation& navigation)> policy) {
    policy_ = std::move(policy);
}

std::string NSWebPage::load(const std::string& address) {
    const std::string scheme = schemeOf(address);
    if (scheme.empty()) {
        return "'" + shownAddress(address) + "' is no address";
    }
    if (scheme == "javascript") {  // it would run in the page that is shown
        return "an address is no script";
    }
    permitFolderOf(address);
    if (NSWebEngine* const engine = this->engine()) {
        engine->load(address);
        return {};
    }
    setKnown(address, {});
    return "there is no web view";
}

std::string NSWebPage::loadHtml(const std::string& html, const std::string& base) {
    if (!base.empty() && schemeOf(base).empty()) {
        return "'" + shownAddress(base) + "' is no address";
    }
    permitFolderOf(base);
    if (NSWebEngine* const engine = this->engine()) {
        engine->loadHtml(html, base);
        return {};
    }
    setKnown(base, titleIn(html));
    return "there is no web view";
}

// ---- for the engine ----

void NSWebPage::permitFolderOf(const std::string& address) {
    if (const auto path = pathOf(address)) {
        fileFolders_.insert(path->parent_path());
    }
}

void NSWebPage::setKnown(const std::string& address, const std::string& title) {
    NSWebState state;
    state.address = address;
    state.title = title;
    setState(std::move(state));
}

void NSWebPage::setState(NSWebState state) {
    if (state_ == state) {
        return;
    }
    state_ = std::move(state);
    if (!engine_) {
        setNeedsDisplayInRect(bounds());
    }
    if (const auto handler = handlers_.stateChanged) {  // a copy: it may be replaced meanwhile
        handler();
    }
}

void NSWebPage::loadDidChange(NSWebLoadPhase phase, const std::string& address,
                              const std::string& message) {
    if (phase == NSWebLoadPhase::Failed) {
        NSLog("The page %s was not loaded: %s", shownAddress(address).c_str(), message.c_str());
    }
    if (const auto handler = handlers_.loadChanged) {
        handler(phase, address, message);
    }
}

bool NSWebPage::mayShowFile(const std::string& address) const {
    const auto path = pathOf(address);
    return path && std::ranges::any_of(fileFolders_, [&](const std::filesystem::path& folder) {
               return std::ranges::mismatch(folder, *path).in1 == folder.end();
           });
}

bool NSWebPage::allows(const NSWebNavigation& navigation) {
    if (schemeOf(navigation.address) == "file" && !mayShowFile(navigation.address)) {
        NSLog("A page may not show the file %s", shownAddress(navigation.address).c_str());
        return false;
    }
    if (const auto policy = policy_) {
        return policy(navigation);
    }
    if (navigation.opensWindow) {
        NSLog("A page may not open a window for %s", shownAddress(navigation.address).c_str());
    }
    return !navigation.opensWindow;
}

void NSWebPage::messageReceived(const std::string& name, const std::string& json) {
    if (json.size() > kMostMessage) {
        NSLog("A message of a page for '%s' was refused: %zu bytes are too long", name.c_str(),
              json.size());
        return;
    }
    const auto handler = handlers_.messageReceived;
    if (handler && messageHandlers_.contains(name)) {
        handler(name, json);
    }
}

void NSWebPage::processDidEnd(const std::string& message) {
    NSLog("The process of the page %s has ended: %s", shownAddress(state_.address).c_str(),
          message.c_str());
    if (const auto handler = handlers_.processEnded) {
        handler(message);
    }
}

// ---- painting ----

void NSWebPage::drawRect(const CGRect&) {
    if (CGContext* const canvas = NSGraphicsContext::currentGraphicsPort()) {
        drawWebPage(*canvas, bounds(), state_);
    }
}

}  // namespace orvane::platform
