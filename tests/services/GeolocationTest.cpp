#include <gio/gio.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <chrono>
#include <string>
#include <vector>

#include "orvane/services/GeolocationService.h"
#include "orvane/services/families.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace {

using namespace orvane::services;
using orvane::platform::CAVirtualClock;
using Reason = ServiceFailure::Reason;

constexpr const char* kInterfaces = R"(<node>
  <interface name='org.freedesktop.GeoClue2.Manager'>
    <method name='CreateClient'><arg type='o' direction='out'/></method>
    <property name='AvailableAccuracyLevel' type='u' access='read'/>
  </interface>
  <interface name='org.freedesktop.GeoClue2.Client'>
    <method name='Start'/>
    <signal name='LocationUpdated'><arg type='o'/><arg type='o'/></signal>
    <property name='DesktopId' type='s' access='readwrite'/>
    <property name='DistanceThreshold' type='u' access='readwrite'/>
    <property name='TimeThreshold' type='u' access='readwrite'/>
    <property name='RequestedAccuracyLevel' type='u' access='readwrite'/>
  </interface>
  <interface name='org.freedesktop.GeoClue2.Location'>
    <property name='Latitude' type='d' access='read'/>
    <property name='Longitude' type='d' access='read'/>
    <property name='Accuracy' type='d' access='read'/>
    <property name='Altitude' type='d' access='read'/>
    <property name='Speed' type='d' access='read'/>
    <property name='Heading' type='d' access='read'/>
    <property name='Description' type='s' access='read'/>
    <property name='Timestamp' type='(tt)' access='read'/>
  </interface>
</node>)";
constexpr const char* kClientPath = "/org/freedesktop/GeoClue2/Client/1";

// Runs the main loop until the condition is true; fails after some seconds.
template <typename Condition>
void waitFor(const Condition& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline);
        if (g_main_context_iteration(nullptr, FALSE) == FALSE) {
            g_usleep(1000);
        }
    }
}

// The location service on a system bus of its own.
class GeoClue {
public:
    std::string startError = {};  // a D-Bus error; empty: Start succeeds
    bool isSilent = false;        // Start is not answered
    std::uint32_t sources = 8;    // AvailableAccuracyLevel
    std::string settings = {};    // what clients set, in order
    std::string place = {};       // the properties of the location, as text
    int clients = 0;
    bool isClientGone = false;
    bool hasStarted = false;
    bool isRead = false;  // the location, since moveTo

    GeoClue() {
        g_test_dbus_up(daemon_);
        setenv("DBUS_SYSTEM_BUS_ADDRESS", g_test_dbus_get_bus_address(daemon_), 1);
        connect();
    }
    ~GeoClue() {
        std::ranges::for_each(watches_, &g_bus_unwatch_name);
        end();
        g_test_dbus_stop(daemon_);
        g_object_unref(daemon_);
        unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
    }
    GeoClue(const GeoClue&) = delete;
    GeoClue& operator=(const GeoClue&) = delete;

    void emit(const char* interface, const char* name, GVariant* arguments) const {
        g_dbus_connection_emit_signal(bus_, nullptr, kClientPath, interface, name, arguments,
                                      nullptr);
    }
    void moveTo(const std::string& properties) {
        place = properties;
        isRead = false;
        emit("org.freedesktop.GeoClue2.Client", "LocationUpdated",
             g_variant_new("(oo)", "/", "/location"));
    }
    void end() {
        if (bus_ != nullptr) {
            g_dbus_connection_close_sync(bus_, nullptr, nullptr);
            g_clear_object(&bus_);
        }
    }

private:
    void connect() {
        bus_ = g_dbus_connection_new_for_address_sync(
            g_test_dbus_get_bus_address(daemon_),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr);
        GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(kInterfaces, nullptr);
        static const GDBusInterfaceVTable table = {&answer, &get, &set, {}};
        const char* const paths[] = {"/org/freedesktop/GeoClue2/Manager", kClientPath, "/location"};
        for (std::size_t i = 0; i < std::size(paths); ++i) {
            g_dbus_connection_register_object(bus_, paths[i], node->interfaces[i], &table, this,
                                              nullptr, nullptr);
        }
        g_dbus_node_info_unref(node);
        g_variant_unref(g_dbus_connection_call_sync(
            bus_, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
            g_variant_new("(su)", "org.freedesktop.GeoClue2", 0), nullptr, G_DBUS_CALL_FLAGS_NONE,
            -1, nullptr, nullptr));
    }
    static void answer(GDBusConnection* bus, const char* sender, const char*, const char*,
                       const char* method, GVariant*, GDBusMethodInvocation* call, void* self) {
        auto& service = *static_cast<GeoClue*>(self);
        if (std::string(method) == "CreateClient") {
            ++service.clients;
            service.watches_.push_back(g_bus_watch_name_on_connection(
                bus, sender, G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
                [](GDBusConnection*, const char*, void* data) {
                    static_cast<GeoClue*>(data)->isClientGone = true;
                },
                self, nullptr));
            g_dbus_method_invocation_return_value(call, g_variant_new("(o)", kClientPath));
        } else if (service.isSilent) {
            service.hasStarted = true;
            g_object_unref(call);
        } else if (!service.startError.empty()) {
            g_dbus_method_invocation_return_dbus_error(call, service.startError.c_str(), "no");
        } else {
            service.hasStarted = true;
            g_dbus_method_invocation_return_value(call, nullptr);
        }
    }
    static GVariant* get(GDBusConnection*, const char*, const char*, const char*, const char* name,
                         GError**, void* self) {
        auto& service = *static_cast<GeoClue*>(self);
        if (std::string(name) == "AvailableAccuracyLevel") {
            return g_variant_new_uint32(service.sources);
        }
        service.isRead = true;
        GVariant* const all = g_variant_new_parsed(("@a{sv} " + service.place).c_str());
        GVariant* const value = g_variant_lookup_value(all, name, nullptr);
        g_variant_unref(g_variant_ref_sink(all));
        return value;
    }
    static gboolean set(GDBusConnection*, const char*, const char*, const char*, const char* name,
                        GVariant* value, GError**, void* self) {
        char* const text = g_variant_print(value, FALSE);
        static_cast<GeoClue*>(self)->settings += std::string(name) + " " + text + "; ";
        g_free(text);
        return TRUE;
    }

    GTestDBus* const daemon_ = g_test_dbus_new(G_TEST_DBUS_NONE);
    GDBusConnection* bus_ = nullptr;
    std::vector<unsigned> watches_;  // of the names of clients
};

// An application that follows the position.
struct Traveler {
    std::vector<Position> positions = {};
    std::vector<ServiceFailure> failures = {};
    GeolocationService service = {};

    void start(const GeolocationRequest& request = {}) {
        service.start(
            request, [this](const Position& position) { positions.push_back(position); },
            [this](const ServiceFailure& failure) { failures.push_back(failure); });
    }
};

}  // namespace

TEST(Geolocation, FollowsTheDeviceUntilItIsStopped) {
    g_set_prgname("org.example.travel");
    GeoClue geoClue;
    Traveler traveler;
    traveler.start({.accuracy = PositionAccuracy::Street,
                    .distance = 50,
                    .interval = std::chrono::seconds(9)});
    waitFor([&] { return geoClue.hasStarted; });
    EXPECT_EQ(geoClue.settings,
              "DesktopId 'org.example.travel'; DistanceThreshold 50; TimeThreshold 9; "
              "RequestedAccuracyLevel 6; ");

    geoClue.moveTo("{'Latitude': <91.0>, 'Longitude': <8.5>}");  // is no position
    waitFor([&] { return geoClue.isRead; });
    geoClue.moveTo(
        "{'Latitude': <47.5>, 'Longitude': <-8.5>, 'Accuracy': <30.0>, 'Altitude': <-3.5>, "
        "'Speed': <0.0>, 'Heading': <270.0>, 'Description': <'Wi-Fi'>, "
        "'Timestamp': <(uint64 1000, uint64 500000)>}");
    waitFor([&] { return traveler.positions.size() == 1; });
    const Position known = traveler.positions.back();
    EXPECT_EQ(known.latitude, 47.5);
    EXPECT_EQ(known.longitude, -8.5);
    EXPECT_EQ(known.accuracy, 30);
    EXPECT_EQ(known.altitude, -3.5);
    EXPECT_EQ(known.speed, 0);
    EXPECT_EQ(known.heading, 270);
    EXPECT_EQ(known.description, "Wi-Fi");
    EXPECT_EQ(known.time.time_since_epoch(), std::chrono::milliseconds(1'000'500));

    geoClue.moveTo(
        "{'Latitude': <1.0>, 'Longitude': <2.0>, 'Altitude': <-1.7976931348623157e308>, "
        "'Speed': <-1.0>, 'Heading': <-1.0>}");
    waitFor([&] { return traveler.positions.size() == 2; });
    const Position unknown = traveler.positions.back();
    EXPECT_FALSE(unknown.altitude || unknown.speed || unknown.heading);

    EXPECT_TRUE(traveler.service.isRunning());
    traveler.service.stop();
    waitFor([&] { return geoClue.isClientGone; });
    EXPECT_TRUE(traveler.failures.empty());
}

TEST(Geolocation, OnePositionEndsTheRunAndTheCallbackMayStartTheNext) {
    GeoClue geoClue;
    GeolocationService service;
    std::vector<double> latitudes;
    const auto found = [&](const Position& position) {
        latitudes.push_back(position.latitude);
        EXPECT_FALSE(service.isRunning());
        service.startOnce({}, [&](const Position& next) { latitudes.push_back(next.latitude); });
    };
    service.startOnce({}, found);
    for (const int run : {1, 2}) {
        waitFor([&] { return geoClue.clients == run && geoClue.hasStarted; });
        geoClue.hasStarted = false;
        geoClue.moveTo("{'Latitude': <" + std::to_string(run) + ".0>, 'Longitude': <0.0>}");
        waitFor([&] { return std::ssize(latitudes) == run; });
    }
    EXPECT_FALSE(service.isRunning());
    EXPECT_EQ(latitudes, (std::vector<double>{1, 2}));
}

TEST(Geolocation, EachFailureHasItsReasonAndOneLine) {
    const auto takeBack = [](GeoClue& geoClue, CAVirtualClock&) {
        geoClue.emit("org.freedesktop.DBus.Properties", "PropertiesChanged",
                     g_variant_new_parsed("('org.freedesktop.GeoClue2.Client', "
                                          "{'Active': <false>}, @as [])"));
    };
    const auto end = [](GeoClue& geoClue, CAVirtualClock&) { geoClue.end(); };
    const auto waitLong = [](GeoClue&, CAVirtualClock& clock) { clock.advanceBy(31); };
    const auto waitForSources = [](GeoClue&, CAVirtualClock& clock) { clock.advanceBy(4); };
    const struct {
        const char* what;
        Reason reason;
        void (*prepare)(GeoClue&);
        void (*happen)(GeoClue&, CAVirtualClock&) = nullptr;  // after the start
    } cases[] = {
        {"refused", Reason::Denied,
         [](GeoClue& service) { service.startError = "org.freedesktop.DBus.Error.AccessDenied"; }},
        {"broken", Reason::Failed,
         [](GeoClue& service) { service.startError = "org.freedesktop.DBus.Error.Failed"; }},
        {"taken back", Reason::Denied, [](GeoClue&) {}, takeBack},
        {"ended", Reason::Unavailable, [](GeoClue&) {}, end},
        {"silent", Reason::TimedOut, [](GeoClue& service) { service.isSilent = true; }, waitLong},
        {"without sources", Reason::Unavailable, [](GeoClue& service) { service.sources = 0; },
         waitForSources},
        {"no service", Reason::Unavailable, [](GeoClue& service) { service.end(); }},
        {"no bus", Reason::Unavailable,
         [](GeoClue&) { setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/no/such/bus", 1); }},
    };
    for (const auto& [what, reason, prepare, happen] : cases) {
        SCOPED_TRACE(what);
        CAVirtualClock clock;
        GeoClue geoClue;
        prepare(geoClue);
        testing::internal::CaptureStderr();
        Traveler traveler;
        traveler.start();
        EXPECT_TRUE(traveler.failures.empty()) << "before start has returned";
        if (happen != nullptr) {
            waitFor([&] { return geoClue.hasStarted; });
            happen(geoClue, clock);
        }
        waitFor([&] { return !traveler.failures.empty(); });
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(traveler.failures.front().reason, reason) << log;
        EXPECT_FALSE(traveler.service.isRunning());
        EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
        EXPECT_NE(log.find("There is no position: "), std::string::npos) << log;
    }
}

// Last: what a host denies is denied for the rest of the process.
TEST(Geolocation, AHostThatDeniesItKeepsTheServiceFromBeingContacted) {
    EXPECT_EQ(familyNamed("geolocation"), Family::Geolocation);
    EXPECT_EQ(familyNamed("Geolocation"), std::nullopt);
    GeoClue geoClue;
    denyFamily(Family::Geolocation);
    Traveler traveler;
    traveler.start();
    EXPECT_TRUE(traveler.failures.empty());
    waitFor([&] { return !traveler.failures.empty(); });
    EXPECT_EQ(traveler.failures.front().reason, Reason::Denied);
    EXPECT_EQ(geoClue.clients, 0);
}
