#include "platform/gtk/web/WebKitEngine.h"

#include <gtk/gtk.h>
#include <libsoup/soup.h>

#include <cstring>
#include <limits>
#include <utility>

#include "platform/foundation/AsyncCallback.h"
#include "platform/foundation/NSLog.h"
#include "platform/gtk/toExtent.h"
#include "platform/gtk/web/WebKitRefusals.h"
#include "platform/gtk/web/createWebKitView.h"
#include "platform/gtk/web/toScriptError.h"
#include "platform/web/NSWebPage.h"

namespace orvane::platform {

namespace {

constexpr std::size_t kMostTitle = 1000;  // bytes

std::string textOf(const char* text) {
    return text != nullptr ? text : "";
}

std::string titleOf(WebKitWebView* view) {
    std::string title = textOf(webkit_web_view_get_title(view));
    if (title.size() > kMostTitle) {
        const char* const end = g_utf8_find_prev_char(title.c_str(), title.c_str() + kMostTitle);
        title.resize(static_cast<std::size_t>(end - title.c_str()));
    }
    return title;
}

// Returns the value as JSON; empty if it has none.
std::string toJson(JSCValue* value) {
    char* const json = jsc_value_to_json(value, 0);
    std::string result = textOf(json);
    g_free(json);
    return result;
}

// Whether a load ended because something else was wanted.
bool isStop(const GError& error) {
    return g_error_matches(&error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED) != FALSE ||
           g_error_matches(&error, WEBKIT_POLICY_ERROR,
                           WEBKIT_POLICY_ERROR_FRAME_LOAD_INTERRUPTED_BY_POLICY_CHANGE) != FALSE ||
           g_error_matches(&error, WEBKIT_MEDIA_ERROR, WEBKIT_MEDIA_ERROR_WILL_HANDLE_LOAD) !=
               FALSE;
}

const char* describe(WebKitWebProcessTerminationReason reason) {
    switch (reason) {
        case WEBKIT_WEB_PROCESS_CRASHED:
            return "it has crashed";
        case WEBKIT_WEB_PROCESS_EXCEEDED_MEMORY_LIMIT:
            return "it took too much memory";
        case WEBKIT_WEB_PROCESS_TERMINATED_BY_API:
            break;
    }
    return "it was ended";
}

// Whether a response is to be stored rather than shown.
bool isDownload(WebKitResponsePolicyDecision* decision) {
    SoupMessageHeaders* const headers = webkit_uri_response_get_http_headers(
        webkit_response_policy_decision_get_response(decision));
    const char* const disposition =
        headers != nullptr ? soup_message_headers_get_one(headers, "Content-Disposition") : nullptr;
    return webkit_response_policy_decision_is_mime_type_supported(decision) == FALSE ||
           (disposition != nullptr &&
            g_ascii_strncasecmp(disposition, "attachment", std::strlen("attachment")) == 0);
}

}  // namespace

struct WebKitEngine::MessageHandler {
    NSWebPage& page;
    std::string name;
    gulong connection = 0;
};

WebKitEngine::WebKitEngine(NSWebPage& page)
    : page_(page), view_(createWebKitView(page.dataFolder())) {
    connect();
    connectFind();
    refusePowers(view_);
    setZoom(page_.zoom());
    for (const std::string& name : page_.messageHandlers()) {
        setMessageHandler(name, true);
    }
}

WebKitEngine::~WebKitEngine() {
    g_cancellable_cancel(cancellable_);
    g_object_unref(cancellable_);
    while (!messageHandlers_.empty()) {
        setMessageHandler(std::string(messageHandlers_.begin()->first), false);
    }
    g_signal_handlers_disconnect_by_data(view_, this);
    g_signal_handlers_disconnect_by_data(webkit_web_view_get_back_forward_list(view_), this);
    g_signal_handlers_disconnect_by_data(webkit_web_view_get_find_controller(view_), this);
    g_object_unref(view_);
}

// ---- what WebKit reports ----

void WebKitEngine::connect() {
    for (const char* const name : {"notify::uri", "notify::title", "notify::is-loading",
                                   "notify::estimated-load-progress"}) {
        g_signal_connect_swapped(
            view_, name, G_CALLBACK(+[](WebKitEngine* self) { self->stateDidChange(); }), this);
    }
    g_signal_connect_swapped(webkit_web_view_get_back_forward_list(view_), "changed",
                             G_CALLBACK(+[](WebKitEngine* self) { self->stateDidChange(); }), this);
    g_signal_connect_swapped(
        view_, "load-changed",
        G_CALLBACK(+[](WebKitEngine* self, WebKitLoadEvent event) { self->loadDidChange(event); }),
        this);
    g_signal_connect_swapped(view_, "load-failed",
                             G_CALLBACK(+[](WebKitEngine* self, WebKitLoadEvent,
                                            const char* address, const GError* error) {
                                 self->loadFailed(address, *error);
                                 return TRUE;  // without WebKit's page about it
                             }),
                             this);
    g_signal_connect_swapped(view_, "decide-policy",
                             G_CALLBACK(+[](WebKitEngine* self, WebKitPolicyDecision* decision,
                                            WebKitPolicyDecisionType type) {
                                 self->decide(decision, type);
                                 return TRUE;
                             }),
                             this);
    // A script opens a window. The page is shown here, if anywhere.
    g_signal_connect_swapped(
        view_, "create", G_CALLBACK(+[](WebKitEngine* self, WebKitNavigationAction* action) {
            WebKitWebView* const view = WEBKIT_WEB_VIEW(g_object_ref(self->view_));
            if (self->allows(action, true)) {
                webkit_web_view_load_request(view, webkit_navigation_action_get_request(action));
            }
            g_object_unref(view);
            return static_cast<GtkWidget*>(nullptr);
        }),
        this);
    g_signal_connect_swapped(
        view_, "web-process-terminated",
        G_CALLBACK(+[](WebKitEngine* self, WebKitWebProcessTerminationReason reason) {
            self->searchesAnswered_ = self->searchesAsked_;  // there is no other answer
            self->page_.processDidEnd(describe(reason));
        }),
        this);
}

void WebKitEngine::connectFind() {
    WebKitFindController* const controller = webkit_web_view_get_find_controller(view_);
    g_signal_connect_swapped(
        controller, "found-text",
        G_CALLBACK(+[](WebKitEngine* self, guint count) { self->found(count); }), this);
    g_signal_connect_swapped(controller, "failed-to-find-text",
                             G_CALLBACK(+[](WebKitEngine* self) { self->found(0); }), this);
}

void WebKitEngine::stateDidChange() {
    page_.setState({textOf(webkit_web_view_get_uri(view_)), titleOf(view_),
                    webkit_web_view_get_estimated_load_progress(view_),
                    webkit_web_view_is_loading(view_) != FALSE,
                    webkit_web_view_can_go_back(view_) != FALSE,
                    webkit_web_view_can_go_forward(view_) != FALSE});
}

void WebKitEngine::loadDidChange(WebKitLoadEvent event) {
    const std::string address = textOf(webkit_web_view_get_uri(view_));
    switch (event) {
        case WEBKIT_LOAD_STARTED:
            hasFailed_ = false;
            page_.loadDidChange(NSWebLoadPhase::Started, address, {});
            break;
        case WEBKIT_LOAD_REDIRECTED:
            break;
        case WEBKIT_LOAD_COMMITTED:
            page_.loadDidChange(NSWebLoadPhase::Committed, address, {});
            break;
        case WEBKIT_LOAD_FINISHED:
            // A load that has failed is finished, too.
            if (!hasFailed_) {
                page_.loadDidChange(NSWebLoadPhase::Finished, address, {});
            }
            break;
    }
}

void WebKitEngine::loadFailed(const char* address, const GError& error) {
    hasFailed_ = true;
    if (isStop(error)) {
        page_.loadDidChange(NSWebLoadPhase::Stopped, textOf(address), {});
    } else {
        page_.loadDidChange(NSWebLoadPhase::Failed, textOf(address), error.message);
    }
}

bool WebKitEngine::allows(WebKitNavigationAction* action, bool opensWindow) {
    const char* const address =
        webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
    return page_.allows(
        {textOf(address), opensWindow, webkit_navigation_action_is_user_gesture(action) != FALSE});
}

void WebKitEngine::decide(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
    if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) {
        auto* const response = WEBKIT_RESPONSE_POLICY_DECISION(decision);
        if (isDownload(response)) {
            const char* const address =
                webkit_uri_request_get_uri(webkit_response_policy_decision_get_request(response));
            NSLog("The download of %s was refused", shownAddress(textOf(address)).c_str());
            webkit_policy_decision_ignore(decision);
        } else {
            webkit_policy_decision_use(decision);
        }
        return;
    }
    WebKitNavigationAction* const action = webkit_navigation_policy_decision_get_navigation_action(
        WEBKIT_NAVIGATION_POLICY_DECISION(decision));
    const bool opensWindow = type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION;
    WebKitWebView* const view = WEBKIT_WEB_VIEW(g_object_ref(view_));
    const bool isAllowed = allows(action, opensWindow);  // may destroy this object
    if (isAllowed && !opensWindow) {
        webkit_policy_decision_use(decision);
    } else {
        webkit_policy_decision_ignore(decision);
    }
    if (isAllowed && opensWindow) {
        webkit_web_view_load_request(view, webkit_navigation_action_get_request(action));
    }
    g_object_unref(view);
}

// ---- loads ----

// Lays the view out where no window does it.
void WebKitEngine::giveSize() {
    auto* const widget = GTK_WIDGET(view_);
    const int width = toExtent(page_.pageSize().width);
    const int height = toExtent(page_.pageSize().height);
    if (gtk_widget_get_parent(widget) == nullptr &&
        (gtk_widget_get_width(widget) != width || gtk_widget_get_height(widget) != height)) {
        gtk_widget_allocate(widget, width, height, -1, nullptr);
    }
}

void WebKitEngine::load(const std::string& address) {
    giveSize();
    webkit_web_view_load_uri(view_, address.c_str());
}

void WebKitEngine::loadHtml(const std::string& html, const std::string& base) {
    giveSize();
    webkit_web_view_load_html(view_, html.c_str(), base.empty() ? nullptr : base.c_str());
}

void WebKitEngine::reload() {
    webkit_web_view_reload(view_);
}

void WebKitEngine::stop() {
    webkit_web_view_stop_loading(view_);
}

void WebKitEngine::goBack() {
    webkit_web_view_go_back(view_);
}

void WebKitEngine::goForward() {
    webkit_web_view_go_forward(view_);
}

// ---- scripts and messages ----

void WebKitEngine::run(const std::string& script,
                       std::function<void(const NSWebScriptResult& result)> done) {
    auto* const call =
        makeAsyncCallback([done = std::move(done)](GObject* view, GAsyncResult* result) {
            GError* error = nullptr;
            JSCValue* value =
                webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, &error);
            if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) == FALSE) {
                NSWebScriptResult outcome;
                if (value != nullptr) {
                    outcome.json = toJson(value);
                } else {
                    outcome = toScriptError(error->message);
                }
                done(outcome);
            }
            g_clear_error(&error);
            g_clear_object(&value);
        });
    webkit_web_view_evaluate_javascript(view_, script.data(), static_cast<gssize>(script.size()),
                                        nullptr, nullptr, cancellable_, &call->call, call);
}

void WebKitEngine::setMessageHandler(const std::string& name, bool isThere) {
    WebKitUserContentManager* const manager = webkit_web_view_get_user_content_manager(view_);
    const auto found = messageHandlers_.find(name);
    if (isThere && found == messageHandlers_.end()) {
        auto handler = std::make_unique<MessageHandler>(MessageHandler{page_, name});
        // It must be connected before the page can use it.
        handler->connection = g_signal_connect_swapped(
            manager, ("script-message-received::" + name).c_str(),
            G_CALLBACK(+[](MessageHandler* self, JSCValue* value) {
                const std::string receiver = self->name;  // the call may destroy the handler
                self->page.messageReceived(receiver, toJson(value));
            }),
            handler.get());
        webkit_user_content_manager_register_script_message_handler(manager, name.c_str(), nullptr);
        messageHandlers_.emplace(name, std::move(handler));
    } else if (!isThere && found != messageHandlers_.end()) {
        webkit_user_content_manager_unregister_script_message_handler(manager, name.c_str(),
                                                                      nullptr);
        g_signal_handler_disconnect(manager, found->second->connection);
        messageHandlers_.erase(found);
    }
}

// ---- what is shown ----

void WebKitEngine::setZoom(double zoom) {
    webkit_web_view_set_zoom_level(view_, zoom);
}

void WebKitEngine::find(const std::string& text, std::function<void(std::size_t count)> done) {
    found_ = std::move(done);
    awaitedSearch_ = ++searchesAsked_;
    webkit_find_controller_search(
        webkit_web_view_get_find_controller(view_), text.c_str(),
        WEBKIT_FIND_OPTIONS_CASE_INSENSITIVE | WEBKIT_FIND_OPTIONS_WRAP_AROUND,
        std::numeric_limits<guint>::max() - 1);
}

void WebKitEngine::found(std::size_t count) {
    if (++searchesAnswered_ != awaitedSearch_) {
        return;
    }
    if (const auto done = std::exchange(found_, nullptr)) {
        done(count);
    }
}

void WebKitEngine::findNext(bool isForward) {
    WebKitFindController* const controller = webkit_web_view_get_find_controller(view_);
    ++searchesAsked_;
    if (isForward) {
        webkit_find_controller_search_next(controller);
    } else {
        webkit_find_controller_search_previous(controller);
    }
}

void WebKitEngine::endFind() {
    found_ = nullptr;
    webkit_find_controller_search_finish(webkit_web_view_get_find_controller(view_));
}

void WebKitEngine::takeSnapshot(
    std::function<void(const std::string& png, const std::string& error)> done) {
    auto* const call =
        makeAsyncCallback([done = std::move(done)](GObject* view, GAsyncResult* result) {
            GError* error = nullptr;
            GdkTexture* const texture =
                webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(view), result, &error);
            if (texture != nullptr) {
                GBytes* const bytes = gdk_texture_save_to_png_bytes(texture);
                std::size_t size = 0;
                const auto* const data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
                const std::string png(data, size);
                g_bytes_unref(bytes);
                g_object_unref(texture);
                done(png, {});
            } else if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED) == FALSE) {
                done({}, error->message);
            }
            g_clear_error(&error);
        });
    webkit_web_view_get_snapshot(view_, WEBKIT_SNAPSHOT_REGION_VISIBLE,
                                 WEBKIT_SNAPSHOT_OPTIONS_NONE, cancellable_, &call->call, call);
}

}  // namespace orvane::platform
