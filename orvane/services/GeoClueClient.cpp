#include "orvane/services/GeoClueClient.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include "orvane/services/Position.h"
#include "platform/foundation/AsyncCallback.h"
#include "platform/foundation/NSLog.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::services {

using Reason = ServiceFailure::Reason;

namespace {

constexpr const char* kService = "org.freedesktop.GeoClue2";
constexpr const char* kManager = "org.freedesktop.GeoClue2.Manager";
constexpr const char* kManagerPath = "/org/freedesktop/GeoClue2/Manager";
constexpr const char* kClient = "org.freedesktop.GeoClue2.Client";
constexpr const char* kLocation = "org.freedesktop.GeoClue2.Location";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

// How long the service may take to find its sources, in seconds: it begins when it is started, and
// answers before it has ended.
constexpr double kSourcesPatience = 3;

struct Unref {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Variant = std::unique_ptr<GVariant, Unref>;

// GClueAccuracyLevel of GeoClue.
std::uint32_t levelOf(PositionAccuracy accuracy) {
    constexpr std::array<std::uint32_t, 5> kLevels{1, 4, 5, 6, 8};
    return kLevels.at(static_cast<std::size_t>(accuracy));
}

// A number that GeoClue uses for "unknown" is far below the smallest that means something.
std::optional<double> knownFrom(double smallest, const std::optional<double>& value) {
    return value && std::isfinite(*value) && *value >= smallest ? value : std::nullopt;
}

std::optional<double> numberOf(GVariant* properties, const char* name) {
    double value = 0;
    return g_variant_lookup(properties, name, "d", &value) != FALSE ? std::optional(value)
                                                                    : std::nullopt;
}

Reason reasonOf(const GError& error) {
    if (g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_ACCESS_DENIED) != FALSE) {
        return Reason::Denied;
    }
    for (const GDBusError missing :
         {G_DBUS_ERROR_SERVICE_UNKNOWN, G_DBUS_ERROR_NAME_HAS_NO_OWNER,
          G_DBUS_ERROR_SPAWN_SERVICE_NOT_FOUND, G_DBUS_ERROR_SPAWN_EXEC_FAILED,
          G_DBUS_ERROR_SPAWN_CHILD_EXITED}) {
        if (g_error_matches(&error, G_DBUS_ERROR, missing) != FALSE) {
            return Reason::Unavailable;
        }
    }
    return Reason::Failed;
}

}  // namespace

// A call of a method of the service.
struct GeoClueClient::Call {
    const char* path;
    const char* interface;
    const char* method;
    GVariant* arguments;  // may be floating, or null
    const char* replyType;
};

GeoClueClient::GeoClueClient(const GeolocationRequest& request,
                             std::function<void(const Position&)> found, FailureCallback failed)
    : request_(request), found_(std::move(found)), failed_(std::move(failed)) {
    const double patience = std::chrono::duration<double>(request.timeout).count();
    deadline_.start(platform::CACurrentMediaTime() + patience, 0,
                    [this] { fail(Reason::TimedOut, "no position in time"); });
    connect();
}

GeoClueClient::~GeoClueClient() {
    close();
    g_object_unref(cancellable_);
}

void GeoClueClient::close() {
    g_cancellable_cancel(cancellable_);
    deadline_.stop();
    sourcesDeadline_.stop();
    if (bus_ != nullptr) {
        for (const unsigned subscription : subscriptions_) {
            g_dbus_connection_signal_unsubscribe(bus_, subscription);
        }
        g_dbus_connection_close(bus_, nullptr, nullptr, nullptr);
        g_clear_object(&bus_);
    }
}

// Wraps a function of an asynchronous call: it is not called after the run has ended.
template <typename Function>
auto* GeoClueClient::guarded(Function function) {
    return platform::makeAsyncCallback(
        [this, alive = std::weak_ptr<bool>(alive_), function = std::move(function)](
            GObject* source, GAsyncResult* result) {
            if (!alive.expired() && g_cancellable_is_cancelled(cancellable_) == FALSE) {
                function(source, result);
            }
        });
}

// Calls a method, and `next` with its answer. The run's own time-out applies.
template <typename Next>
void GeoClueClient::send(const Call& call, Next next) {
    auto* const done = guarded([next = std::move(next)](GObject* source, GAsyncResult* result) {
        GError* error = nullptr;
        const Variant reply(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error));
        next(reply.get(), error);
        g_clear_error(&error);
    });
    g_dbus_connection_call(bus_, kService, call.path, call.interface, call.method, call.arguments,
                           G_VARIANT_TYPE(call.replyType), G_DBUS_CALL_FLAGS_NONE, G_MAXINT,
                           cancellable_, &done->call, done);
}

void GeoClueClient::connect() {
    GError* error = nullptr;
    char* const address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, cancellable_, &error);
    auto* const done = guarded([this](GObject*, GAsyncResult* result) {
        GError* problem = nullptr;
        GDBusConnection* const bus = g_dbus_connection_new_for_address_finish(result, &problem);
        if (bus != nullptr) {
            connected(bus);
        } else {
            fail(Reason::Unavailable, std::string("no system bus: ") + problem->message);
            g_clear_error(&problem);
        }
    });
    // An address that is missing or wrong is reported by the callback.
    g_clear_error(&error);
    g_dbus_connection_new_for_address(
        address != nullptr ? address : "",
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, cancellable_, &done->call, done);
    g_free(address);
}

void GeoClueClient::connected(GDBusConnection* bus) {
    bus_ = bus;
    subscribe("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
              "NameOwnerChanged", kService, &GeoClueClient::serviceOwnerChanged);
    send({kManagerPath, kManager, "CreateClient", nullptr, "(o)"},
         [this](GVariant* reply, GError* error) {
             if (reply == nullptr) {
                 fail(error);
                 return;
             }
             const char* path = nullptr;
             g_variant_get(reply, "(&o)", &path);
             created(path);
         });
}

void GeoClueClient::created(const std::string& path) {
    path_ = path;
    subscribe(kService, path_.c_str(), kClient, "LocationUpdated", nullptr,
              &GeoClueClient::locationUpdated);
    subscribe(kService, path_.c_str(), kProperties, "PropertiesChanged", kClient,
              &GeoClueClient::propertiesChanged);
    // The service refuses clients without an id.
    const char* const program = g_get_prgname();
    setProperty("DesktopId", g_variant_new_string(program != nullptr ? program : "orvane-host"));
    setProperty("DistanceThreshold", g_variant_new_uint32(request_.distance));
    const auto interval = std::max<std::chrono::seconds::rep>(request_.interval.count(), 0);
    setProperty("TimeThreshold", g_variant_new_uint32(static_cast<std::uint32_t>(
                                     std::min<std::chrono::seconds::rep>(interval, UINT32_MAX))));
    setProperty("RequestedAccuracyLevel", g_variant_new_uint32(levelOf(request_.accuracy)));
    send({path_.c_str(), kClient, "Start", nullptr, "()"}, [this](GVariant* reply, GError* error) {
        if (reply == nullptr) {
            fail(error);
        }
    });
    sourcesDeadline_.start(platform::CACurrentMediaTime() + kSourcesPatience, 0,
                           [this] { checkSources(); });
}

// A service without any source never answers, and says so here only.
void GeoClueClient::checkSources() {
    send({kManagerPath, kProperties, "Get",
          g_variant_new("(ss)", kManager, "AvailableAccuracyLevel"), "(v)"},
         [this](GVariant* reply, GError*) {
             if (reply == nullptr || !deadline_.isRunning()) {
                 return;
             }
             GVariant* value = nullptr;
             g_variant_get(reply, "(v)", &value);
             const Variant level(value);
             if (g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32) != FALSE &&
                 g_variant_get_uint32(value) == 0) {
                 fail(Reason::Unavailable, "the location service has no source of positions");
             }
         });
}

void GeoClueClient::setProperty(const char* name, GVariant* value) {
    // The messages of a connection arrive in order, so Start finds the value.
    send({path_.c_str(), kProperties, "Set", g_variant_new("(ssv)", kClient, name, value), "()"},
         [](GVariant*, GError*) {});
}

void GeoClueClient::subscribe(const char* sender, const char* path, const char* interface,
                              const char* name, const char* argument,
                              void (GeoClueClient::*handler)(GVariant*)) {
    struct Subscriber {
        GeoClueClient* client;
        std::weak_ptr<bool> alive;
        void (GeoClueClient::*handler)(GVariant*);
    };
    subscriptions_.push_back(g_dbus_connection_signal_subscribe(
        bus_, sender, interface, name, path, argument, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, const char*, const char*,
           GVariant* arguments, void* data) {
            const auto& subscriber = *static_cast<Subscriber*>(data);
            if (!subscriber.alive.expired()) {
                (subscriber.client->*subscriber.handler)(arguments);
            }
        },
        new Subscriber{this, alive_, handler},
        [](void* data) { delete static_cast<Subscriber*>(data); }));
}

void GeoClueClient::serviceOwnerChanged(GVariant* arguments) {
    const char* owner = nullptr;
    g_variant_get(arguments, "(&s&s&s)", nullptr, nullptr, &owner);
    if (*owner == '\0') {
        fail(Reason::Unavailable, "the location service has ended");
    }
}

// The service ends a client when the user takes the permission back.
void GeoClueClient::propertiesChanged(GVariant* arguments) {
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sa{sv}as)")) == FALSE) {
        return;
    }
    const Variant changed(g_variant_get_child_value(arguments, 1));
    gboolean isActive = TRUE;
    if (g_variant_lookup(changed.get(), "Active", "b", &isActive) != FALSE && isActive == FALSE) {
        fail(Reason::Denied, "the permission was taken back");
    }
}

void GeoClueClient::locationUpdated(GVariant* arguments) {
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(oo)")) == FALSE) {
        return;
    }
    const char* path = nullptr;
    g_variant_get(arguments, "(&o&o)", nullptr, &path);
    send({path, kProperties, "GetAll", g_variant_new("(s)", kLocation), "(a{sv})"},
         [this](GVariant* reply, GError*) {
             // There is no reply if a newer location has replaced this one; its signal follows.
             if (reply != nullptr) {
                 const Variant properties(g_variant_get_child_value(reply, 0));
                 located(properties.get());
             }
         });
}

void GeoClueClient::located(GVariant* properties) {
    const auto latitude = numberOf(properties, "Latitude");
    const auto longitude = numberOf(properties, "Longitude");
    if (!latitude || !longitude || !(std::abs(*latitude) <= 90) || !(std::abs(*longitude) <= 180)) {
        platform::NSLog("The location service sent a position that is none.");
        return;
    }
    deadline_.stop();
    sourcesDeadline_.stop();
    Position position{*latitude, *longitude};
    position.accuracy = knownFrom(0, numberOf(properties, "Accuracy")).value_or(0);
    // The service sends -1.8e308 for an unknown altitude, and -1 for the others.
    position.altitude = knownFrom(-1e300, numberOf(properties, "Altitude"));
    position.heading = knownFrom(0, numberOf(properties, "Heading"));
    position.speed = knownFrom(0, numberOf(properties, "Speed"));
    const char* description = nullptr;
    if (g_variant_lookup(properties, "Description", "&s", &description) != FALSE) {
        position.description = description;
    }
    position.time = std::chrono::system_clock::now();
    std::uint64_t seconds = 0;
    std::uint64_t microseconds = 0;
    if (g_variant_lookup(properties, "Timestamp", "(tt)", &seconds, &microseconds) != FALSE) {
        position.time = std::chrono::system_clock::time_point(
            std::chrono::seconds(seconds) + std::chrono::microseconds(microseconds));
    }
    const auto found = found_;  // may destroy this object
    found(position);
}

void GeoClueClient::fail(GError* error) {
    g_dbus_error_strip_remote_error(error);
    fail(reasonOf(*error), error->message);
}

void GeoClueClient::fail(Reason reason, const std::string& message) {
    close();
    platform::NSLog("There is no position: %s", message.c_str());
    const auto failed = failed_;  // may destroy this object
    failed({reason, message});
}

}  // namespace orvane::services
