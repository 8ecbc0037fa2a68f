#include "orvane/display/native/NWebView.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include "orvane/commons/guardedCall.h"
#include "orvane/display/geometry/Matrix.h"
#include "orvane/display/native/NativeLayer.h"
#include "orvane/services/families.h"
#include "orvane/system/system.h"
#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSLog.h"
#include "platform/web/NSWebPage.h"

namespace orvane::display::native {

using platform::NSWebEngine;
using platform::NSWebPage;
using services::ServiceFailure;

namespace {

constexpr double kPatience = 30;  // seconds that a call may take
constexpr double kLeastZoom = 0.25;
constexpr double kMostZoom = 5;

// Why there is no engine.
ServiceFailure missingEngine() {
    if (services::isFamilyDenied(services::Family::Web)) {
        return {ServiceFailure::Reason::Denied, "the host denies pages of the web"};
    }
    return {ServiceFailure::Reason::Unavailable, "there is no web view"};
}

}  // namespace

struct NWebView::State {
    double zoom = 1;
    std::map<std::string, std::function<void(const Message&)>> messageHandlers = {};
    std::vector<std::weak_ptr<services::ServiceCall>> calls = {};  // some may be over
    Call search = {};
    bool isChangePending = false;  // a ChangeEvent follows
};

class NWebView::Layer final : public NativeLayer {
public:
    // The page handles the pointer.
    bool isNeedsGestureRecognizer() const override { return false; }

protected:
    std::shared_ptr<platform::NSView> createLayerHandler() override {
        return std::make_shared<NSWebPage>();
    }
    void validateLayer() override {
        NativeLayer::validateLayer();
        if (!getObjects().empty()) {
            if (const auto view =
                    std::dynamic_pointer_cast<NWebView>(getObjects().front().lock())) {
                view->updateScale();
            }
        }
    }
};

NWebView::NWebView() : state_(std::make_unique<State>()) {}

NWebView::~NWebView() {
    for (const std::weak_ptr<services::ServiceCall>& pending : state_->calls) {
        if (const Call call = pending.lock()) {
            call->cancel();
        }
    }
}

std::shared_ptr<NativeLayer> NWebView::createLayer() {
    return std::make_shared<Layer>();
}

void NWebView::init() {
    NativeObject::init();
    const auto weak =
        std::weak_ptr<NWebView>(std::dynamic_pointer_cast<NWebView>(shared_from_this()));
    NSWebPage::Handlers handlers;
    handlers.stateChanged = [weak] {
        // Some changes happen during a call.
        const auto self = weak.lock();
        if (!self || std::exchange(self->state_->isChangePending, true)) {
            return;
        }
        platform::dispatchMainAsync([weak] {
            if (const auto changed = weak.lock()) {
                changed->state_->isChangePending = false;
                changed->report(ChangeEvent());
            }
        });
    };
    handlers.loadChanged = [weak](platform::NSWebLoadPhase phase, const std::string& address,
                                  const std::string& message) {
        const auto self = weak.lock();
        if (!self) {
            return;
        }
        // The platform's phases are in the same order.
        LoadEvent event{static_cast<LoadPhase>(phase), address};
        if (event.phase == LoadPhase::Failed) {
            event.failure = {ServiceFailure::Reason::Failed, message};
        }
        self->report(event);
    };
    handlers.messageReceived = [weak](const std::string& name, const std::string& json) {
        const auto self = weak.lock();
        if (!self) {
            return;
        }
        const auto found = self->state_->messageHandlers.find(name);
        if (found != self->state_->messageHandlers.end()) {
            const auto handler = found->second;  // a copy: it may be replaced meanwhile
            commons::guardedCall("exception of a message handler of a web view", [&] {
                handler({json, self->getAddress()});
            });
        }
    };
    handlers.processEnded = [weak](const std::string& message) {
        if (const auto self = weak.lock()) {
            self->report(CrashEvent{message});
        }
    };
    page().setHandlers(std::move(handlers));
}

NSWebPage& NWebView::page() const {
    return static_cast<NSWebPage&>(*getObjectHandler());
}

template <typename Event>
void NWebView::report(const Event& event) {
    commons::guardedCall("exception of a listener of a web view", [&] { notify(event); });
}

// ---- loading ----

// Reports a load that was refused. Nothing is refused if `fault` is empty.
void NWebView::load(const std::string& address, const std::string& fault) {
    if (fault.empty()) {
        return;
    }
    ServiceFailure failure = page().engine() == nullptr
                                 ? missingEngine()
                                 : ServiceFailure{ServiceFailure::Reason::Failed, fault};
    const auto weak =
        std::weak_ptr<NWebView>(std::dynamic_pointer_cast<NWebView>(shared_from_this()));
    platform::dispatchMainAsync([weak, address, failure = std::move(failure)] {
        platform::NSLog("The page %s was not loaded: %s", platform::shownAddress(address).c_str(),
                        failure.message.c_str());
        if (const auto self = weak.lock()) {
            self->report(LoadEvent{LoadPhase::Failed, address, failure});
        }
    });
}

// A page that is in no window has the object's size, too.
void NWebView::wantSize() {
    const geometry::Rect<double> bounds = getBounds();
    page().setWantedSize({bounds.width, bounds.height});
}

void NWebView::load(const std::string& address) {
    wantSize();
    load(address, page().load(address));
}

void NWebView::loadHtml(const std::string& html, const std::string& base) {
    wantSize();
    load(base, page().loadHtml(html, base));
}

void NWebView::loadFile(const std::string& path) {
    load(platform::fileAddress(path));
}

void NWebView::reload() {
    if (NSWebEngine* const engine = page().engine()) {
        engine->reload();
    } else {
        load(getAddress());
    }
}

void NWebView::stop() {
    if (NSWebEngine* const engine = page().engine()) {
        engine->stop();
    }
}

void NWebView::goBack() {
    if (canGoBack()) {
        page().engine()->goBack();
    }
}

void NWebView::goForward() {
    if (canGoForward()) {
        page().engine()->goForward();
    }
}

// ---- what is known of the page ----

bool NWebView::canGoBack() const {
    return page().state().canGoBack;
}

bool NWebView::canGoForward() const {
    return page().state().canGoForward;
}

std::string NWebView::getAddress() const {
    return page().state().address;
}

std::string NWebView::getTitle() const {
    return page().state().title;
}

double NWebView::getProgress() const {
    return page().state().progress;
}

bool NWebView::isLoading() const {
    return page().state().isLoading;
}

// ---- calls ----

NWebView::Call NWebView::begin(
    services::FailureCallback failed,
    const std::function<void(NSWebEngine& engine, const Call& call)>& start) {
    const Call call(new services::ServiceCall(std::move(failed)));
    std::erase_if(state_->calls, [](const auto& pending) { return pending.expired(); });
    state_->calls.push_back(call);
    if (NSWebEngine* const engine = page().engine()) {
        call->limit(kPatience);
        start(*engine, call);
    } else {
        platform::dispatchMainAsync([call, failure = missingEngine()] { call->fail(failure); });
    }
    return call;
}

NWebView::Call NWebView::runScript(const std::string& script,
                                   std::function<void(const ScriptResult& result)> done,
                                   services::FailureCallback failed) {
    return begin(std::move(failed), [&](NSWebEngine& engine, const Call& call) {
        engine.run(script,
                   [call, done = std::move(done)](const platform::NSWebScriptResult& outcome) {
                       ScriptResult result{outcome.json};
                       if (!outcome.error.empty()) {
                           result.error = {outcome.error, outcome.line, outcome.column};
                       }
                       call->finish([&] {
                           if (done) {
                               done(result);
                           }
                       });
                   });
    });
}

void NWebView::setMessageHandler(const std::string& name,
                                 std::function<void(const Message&)> handler) {
    if (!handler) {
        state_->messageHandlers.erase(name);
        page().removeMessageHandler(name);
    } else if (page().addMessageHandler(name)) {
        state_->messageHandlers[name] = std::move(handler);
    }
}

NWebView::Call NWebView::find(const std::string& text, std::function<void(std::size_t count)> found,
                              services::FailureCallback failed) {
    if (state_->search) {
        state_->search->cancel();
    }
    state_->search = begin(std::move(failed), [&](NSWebEngine& engine, const Call& call) {
        engine.find(text, [call, found = std::move(found)](std::size_t count) {
            call->finish([&] {
                if (found) {
                    found(count);
                }
            });
        });
    });
    return state_->search;
}

void NWebView::findNext() {
    if (NSWebEngine* const engine = page().engine()) {
        engine->findNext(true);
    }
}

void NWebView::findPrevious() {
    if (NSWebEngine* const engine = page().engine()) {
        engine->findNext(false);
    }
}

void NWebView::endFind() {
    if (state_->search) {
        state_->search->cancel();
    }
    if (NSWebEngine* const engine = page().engine()) {
        engine->endFind();
    }
}

NWebView::Call NWebView::takeSnapshot(std::function<void(const std::string& bytes)> taken,
                                      services::FailureCallback failed) {
    return begin(std::move(failed), [&](NSWebEngine& engine, const Call& call) {
        engine.takeSnapshot(
            [call, taken = std::move(taken)](const std::string& png, const std::string& error) {
                if (!error.empty()) {
                    call->fail({ServiceFailure::Reason::Failed, error});
                    return;
                }
                call->finish([&] {
                    if (taken) {
                        taken(png);
                    }
                });
            });
    });
}

// ---- what pages may do ----

void NWebView::setNavigationPolicy(std::function<bool(const Navigation& navigation)> policy) {
    if (!policy) {
        page().setPolicy({});
        return;
    }
    page().setPolicy([policy = std::move(policy)](const platform::NSWebNavigation& navigation) {
        bool isAllowed = false;
        commons::guardedCall("exception of a policy of a web view", [&] {
            isAllowed =
                policy({navigation.address, navigation.opensWindow, navigation.isUserGesture});
        });
        return isAllowed;
    });
}

void NWebView::setPersistent(bool persistent) {
    const std::string folder = persistent ? system::getCachesDirectory() + "/web" : std::string();
    if (!page().setDataFolder(folder)) {
        platform::NSLog("NWebView: setPersistent was refused: the page is loaded already");
    }
}

// ---- what is shown ----

void NWebView::setZoom(double zoom) {
    if (std::isnan(zoom)) {
        platform::NSLog("NWebView: a zoom that is not a number was refused");
        return;
    }
    state_->zoom = std::clamp(zoom, kLeastZoom, kMostZoom);
    updateScale();
}

double NWebView::getZoom() const {
    return state_->zoom;
}

void NWebView::updateScale() {
    const geometry::Matrix matrix = getFullTransformation();
    const double scale = std::hypot(matrix.m01, matrix.m11);
    if (std::isfinite(scale) && scale > 0) {
        page().setZoom(state_->zoom * scale);
    }
}

}  // namespace orvane::display::native
