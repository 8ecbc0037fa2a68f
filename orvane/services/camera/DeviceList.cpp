#include "orvane/services/camera/DeviceList.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace orvane::services {

namespace {

std::string taken(gchar* text) {
    std::string result = text != nullptr ? text : "";
    g_free(text);
    return result;
}

struct StructureFree {
    void operator()(GstStructure* structure) const { gst_structure_free(structure); }
};
using Properties = std::unique_ptr<GstStructure, StructureFree>;

std::string textOf(const GstStructure* properties, const char* name) {
    const gchar* const text =
        properties != nullptr ? gst_structure_get_string(properties, name) : nullptr;
    return text != nullptr ? text : "";
}

// What identifies a device for its provider: the name of a node of PipeWire, or the path of a
// device file. Others have only the name for users.
std::string idOf(GstDevice* device) {
    const Properties properties(gst_device_get_properties(device));
    constexpr std::array kNames{"node.name", "device.path"};
    for (const char* const name : kNames) {
        if (std::string id = textOf(properties.get(), name); !id.empty()) {
            return id;
        }
    }
    return taken(gst_device_get_display_name(device));
}

// Takes a list of devices.
std::vector<GstRef<GstDevice>> devicesFrom(GList* list) {
    std::vector<GstRef<GstDevice>> devices;
    for (const GList* link = list; link != nullptr; link = link->next) {
        devices.emplace_back(static_cast<GstDevice*>(link->data));
    }
    g_list_free(list);
    return devices;
}

std::vector<GstRef<GstDevice>> devicesOfClass(const char* classes) {
    std::vector<GstRef<GstDevice>> found;
    GList* const factories =
        gst_device_provider_factory_list_get_device_providers(GST_RANK_MARGINAL);
    for (const GList* link = factories; link != nullptr; link = link->next) {
        auto* const factory = static_cast<GstDeviceProviderFactory*>(link->data);
        if (gst_device_provider_factory_has_classes(factory, classes) == FALSE) {
            continue;
        }
        const GstRef<GstDeviceProvider> provider(gst_device_provider_factory_get(factory));
        if (!provider) {
            continue;
        }
        for (auto& device : devicesFrom(gst_device_provider_get_devices(provider.get()))) {
            if (gst_device_has_classes(device.get(), classes) != FALSE) {
                found.push_back(std::move(device));
            }
        }
    }
    gst_plugin_feature_list_free(factories);
    return found;
}

}  // namespace

std::optional<ServiceFailure> DeviceList::open(std::function<void()> changed) {
    GError* error = nullptr;
    if (gst_init_check(nullptr, nullptr, &error) == FALSE) {
        ServiceFailure failure{ServiceFailure::Reason::Unavailable, error->message};
        g_clear_error(&error);
        return failure;
    }
    changed_ = std::move(changed);
    monitor_.reset(gst_device_monitor_new());
    gst_device_monitor_add_filter(monitor_.get(), "Video/Source", nullptr);
    const GstRef<GstBus> bus(gst_device_monitor_get_bus(monitor_.get()));
    gst_bus_add_watch(
        bus.get(),
        [](GstBus*, GstMessage*, gpointer self) -> gboolean {
            static_cast<DeviceList*>(self)->update();
            return G_SOURCE_CONTINUE;
        },
        this);
    if (gst_device_monitor_start(monitor_.get()) == FALSE) {
        return ServiceFailure{ServiceFailure::Reason::Unavailable,
                              "GStreamer has nothing that finds cameras"};
    }
    update();
    return {};
}

DeviceList::~DeviceList() {
    if (monitor_) {
        const GstRef<GstBus> bus(gst_device_monitor_get_bus(monitor_.get()));
        gst_bus_remove_watch(bus.get());
        gst_device_monitor_stop(monitor_.get());
    }
}

void DeviceList::update() {
    devices_ = devicesFrom(gst_device_monitor_get_devices(monitor_.get()));
    cameras_.clear();
    for (const auto& device : devices_) {
        Camera camera{idOf(device.get()), taken(gst_device_get_display_name(device.get()))};
        const auto count = std::ranges::count(cameras_, camera.name, &Camera::name);
        const std::string id = camera.id;
        for (int number = 2; std::ranges::find(cameras_, camera.id, &Camera::id) != cameras_.end();
             ++number) {
            camera.id = id + "#" + std::to_string(number);
        }
        if (count > 0) {
            camera.name += " (" + std::to_string(count + 1) + ")";
        }
        cameras_.push_back(std::move(camera));
    }
    changed_();
}

GstDevice* DeviceList::find(const std::string& id) const {
    for (std::size_t i = 0; i < cameras_.size(); ++i) {
        if (id.empty() || cameras_[i].id == id) {
            return devices_[i].get();
        }
    }
    return nullptr;
}

// Asks the providers directly: a second monitor would take the messages of the providers that it
// shares with the first one, for example of PipeWire's (GStreamer 1.22).
GstRef<GstDevice> DeviceList::microphone() {
    GstRef<GstDevice> result;
    bool hasDefault = false;
    for (const auto& device : devicesOfClass("Audio/Source")) {
        const Properties properties(gst_device_get_properties(device.get()));
        gboolean isDefault = FALSE;
        if (properties) {
            gst_structure_get_boolean(properties.get(), "is-default", &isDefault);
        }
        // What the loudspeakers play is a source, too.
        const bool isMicrophone = textOf(properties.get(), "device.class") != "monitor";
        if (isMicrophone && (!result || (isDefault != FALSE && !hasDefault))) {
            result.reset(GST_DEVICE(gst_object_ref(device.get())));
            hasDefault = isDefault != FALSE;
        }
    }
    return result;
}

}  // namespace orvane::services
