#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "orvane/services/GeolocationRequest.h"
#include "orvane/services/ServiceFailure.h"
#include "platform/quartzcore/CATimer.h"

namespace orvane::services {

struct Position;

// One client of GeoClue, the location service on the system bus, with a connection of its own: when
// that is closed, GeoClue deletes the client and stops its sources. The D-Bus interface is that of
// GeoClue 2.5.0 and later.
//
// Nothing here waits: each step is a message whose answer begins the next one. Main thread only.
class GeoClueClient {
public:
    // Begins to connect. `found` is called with each position, `failed` at most once and at the
    // end. Either may destroy the client.
    GeoClueClient(const GeolocationRequest& request, std::function<void(const Position&)> found,
                  FailureCallback failed);
    // No call follows.
    ~GeoClueClient();
    GeoClueClient(const GeoClueClient&) = delete;
    GeoClueClient& operator=(const GeoClueClient&) = delete;

private:
    struct Call;

    void connect();
    void connected(GDBusConnection* bus);
    void created(const std::string& path);
    void checkSources();
    void locationUpdated(GVariant* arguments);
    void propertiesChanged(GVariant* arguments);
    void located(GVariant* properties);

    template <typename Function>
    auto* guarded(Function function);
    template <typename Next>
    void send(const Call& call, Next next);
    void setProperty(const char* name, GVariant* value);
    void subscribe(const char* sender, const char* path, const char* interface, const char* name,
                   const char* argument, void (GeoClueClient::*handler)(GVariant*));
    void serviceOwnerChanged(GVariant* arguments);
    void fail(GError* error);
    void fail(ServiceFailure::Reason reason, const std::string& message);
    void close();

    const GeolocationRequest request_;
    std::function<void(const Position&)> found_;
    FailureCallback failed_;
    GDBusConnection* bus_ = nullptr;
    GCancellable* const cancellable_ = g_cancellable_new();
    std::vector<unsigned> subscriptions_;
    std::string path_;  // of the client; empty until there is one
    platform::CATimer deadline_;
    platform::CATimer sourcesDeadline_;
    // Answers that arrive after the destructor find this expired.
    const std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace orvane::services
