#include "tests/capture/TestCameras.h"

#include <gst/gst.h>

#include <atomic>
#include <list>
#include <utility>

namespace orvane::tests::cameras {

namespace {

std::atomic<int> sources = 0;

// ---- a source that fails when it is started ----

struct FaultySource {
    GstElement element;
    Device* device;
};
struct FaultySourceClass {
    GstElementClass parent;
};

GstStateChangeReturn failToStart(GstElement* element, GstStateChange change) {
    if (change != GST_STATE_CHANGE_READY_TO_PAUSED) {
        return GST_STATE_CHANGE_SUCCESS;
    }
    const Device& device = *reinterpret_cast<FaultySource*>(element)->device;
    gst_element_message_full(element, GST_MESSAGE_ERROR, GST_RESOURCE_ERROR, device.error,
                             g_strdup("The device cannot be used."),
                             g_strdup(device.details.c_str()), __FILE__, G_STRFUNC, __LINE__);
    return GST_STATE_CHANGE_FAILURE;
}

GType faultySourceType() {
    static const GType type = g_type_register_static_simple(
        GST_TYPE_ELEMENT, "OrvaneFaultySource", sizeof(FaultySourceClass),
        [](gpointer self, gpointer) {
            static_cast<GstElementClass*>(self)->change_state = &failToStart;
        },
        sizeof(FaultySource),
        [](GTypeInstance* self, gpointer) {
            gst_element_add_pad(reinterpret_cast<GstElement*>(self),
                                gst_pad_new("src", GST_PAD_SRC));
        },
        static_cast<GTypeFlags>(0));
    return type;
}

// ---- a device ----

struct TestDevice {
    GstDevice parent;
    Device* device;
};
struct TestDeviceClass {
    GstDeviceClass parent;
};

GstElement* makeSource(Device& device) {
    GstElement* source = nullptr;
    switch (device.kind) {
        case Kind::Red:
        case Kind::Text:
            source = gst_element_factory_make("videotestsrc", nullptr);
            gst_util_set_object_arg(G_OBJECT(source), "pattern", "red");
            gst_util_set_object_arg(G_OBJECT(source), "is-live", "true");
            break;
        case Kind::Missing:
            source = gst_element_factory_make("v4l2src", nullptr);
            g_object_set(source, "device", "/dev/no-such-camera", nullptr);
            break;
        case Kind::Microphone:
            source = gst_element_factory_make("audiotestsrc", nullptr);
            gst_util_set_object_arg(G_OBJECT(source), "is-live", "true");
            break;
        case Kind::Faulty:
            source = static_cast<GstElement*>(g_object_new(faultySourceType(), nullptr));
            reinterpret_cast<FaultySource*>(source)->device = &device;
            break;
    }
    ++sources;
    g_object_weak_ref(
        G_OBJECT(source), [](gpointer, GObject*) { --sources; }, nullptr);
    return source;
}

GType deviceType() {
    static const GType type = g_type_register_static_simple(
        GST_TYPE_DEVICE, "OrvaneTestDevice", sizeof(TestDeviceClass),
        [](gpointer self, gpointer) {
            static_cast<GstDeviceClass*>(self)->create_element = [](GstDevice* from, const gchar*) {
                return makeSource(*reinterpret_cast<TestDevice*>(from)->device);
            };
        },
        sizeof(TestDevice), nullptr, static_cast<GTypeFlags>(0));
    return type;
}

// The largest mode is preferred by none of the tests.
const char* capsOf(Kind kind) {
    switch (kind) {
        case Kind::Text:
            return "text/x-raw";
        case Kind::Microphone:
            return "audio/x-raw";
        default:
            return "video/x-raw, format=YUY2, width=1920, height=1080, framerate={30/1, 5/1}; "
                   "video/x-raw, format=YUY2, width=640, height=480, framerate={60/1, 15/1, 30/1}; "
                   "video/x-raw, format=YUY2, width=320, height=240, framerate=[1/1, 60/1]";
    }
}

// ---- the provider ----

struct TestProviderClass {
    GstDeviceProviderClass parent;
};

struct Connected {
    Device device;
    GstDevice* object;
};
// Never shortened: sources refer to their devices.
std::list<Connected> connected;
GstDeviceProvider* provider = nullptr;

GType providerType() {
    static const GType type = g_type_register_static_simple(
        GST_TYPE_DEVICE_PROVIDER, "OrvaneTestProvider", sizeof(TestProviderClass),
        [](gpointer self, gpointer) {
            auto* const made = static_cast<GstDeviceProviderClass*>(self);
            made->start = [](GstDeviceProvider*) -> gboolean { return TRUE; };
            made->stop = [](GstDeviceProvider*) {};
            gst_device_provider_class_set_static_metadata(made, "Test", "Source/Audio/Video",
                                                          "Devices of a test", "Orvane");
        },
        sizeof(GstDeviceProvider), nullptr, static_cast<GTypeFlags>(0));
    return type;
}

}  // namespace

void install() {
    gst_init(nullptr, nullptr);
    gst_device_provider_register(nullptr, "orvanetestprovider", GST_RANK_PRIMARY, providerType());
    // The provider of a factory is one object, which all monitors share.
    provider = gst_device_provider_factory_get_by_name("orvanetestprovider");
}

void connect(const Device& device) {
    Connected& added = connected.emplace_back(Connected{device, nullptr});
    GstCaps* const caps = gst_caps_from_string(capsOf(device.kind));
    added.object = static_cast<GstDevice*>(g_object_new(
        deviceType(), "display-name", device.name.c_str(), "device-class",
        device.kind == Kind::Microphone ? "Audio/Source" : "Video/Source", "caps", caps, nullptr));
    gst_caps_unref(caps);
    reinterpret_cast<TestDevice*>(added.object)->device = &added.device;
    gst_object_ref_sink(added.object);
    gst_device_provider_device_add(provider, added.object);
}

void disconnect(const std::string& name) {
    for (Connected& each : connected) {
        if (each.device.name == name && each.object != nullptr) {
            gst_device_provider_device_remove(provider, each.object);
            gst_object_unref(std::exchange(each.object, nullptr));
        }
    }
}

void disconnectAll() {
    for (const Connected& each : connected) {
        disconnect(each.device.name);
    }
}

int sourcesInUse() {
    return sources;
}

}  // namespace orvane::tests::cameras
