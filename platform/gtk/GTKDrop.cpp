#include "platform/gtk/GTKDrop.h"

#include <gtk/gtk.h>

#include <iterator>
#include <utility>

#include "platform/appkit/NSDrop.h"

namespace orvane::platform {

GTKDrop::GTKDrop(GtkWidget* widget, std::function<bool(const NSDrop&)> send)
    : widget_(widget),
      send_(std::move(send)),
      target_(gtk_drop_target_new(G_TYPE_INVALID, GDK_ACTION_COPY)) {
    GType types[] = {GDK_TYPE_FILE_LIST, G_TYPE_STRING};
    gtk_drop_target_set_gtypes(target_, types, std::size(types));
    gtk_drop_target_set_preload(target_, TRUE);
    const auto over = +[](GtkDropTarget* target, double x, double y, GTKDrop* self) {
        return self->send(NSDropPhase::Over, gtk_drop_target_get_value(target), x, y)
                   ? GDK_ACTION_COPY
                   : GdkDragAction{};
    };
    g_signal_connect(target_, "enter", G_CALLBACK(over), this);
    g_signal_connect(target_, "motion", G_CALLBACK(over), this);
    g_signal_connect(target_, "leave", G_CALLBACK(+[](GtkDropTarget*, GTKDrop* self) {
                         self->send(NSDropPhase::Left, nullptr, 0, 0);
                     }),
                     this);
    g_signal_connect(target_, "drop",
                     G_CALLBACK(+[](GtkDropTarget*, const GValue* value, double x, double y,
                                    GTKDrop* self) -> gboolean {
                         return self->send(NSDropPhase::Performed, value, x, y) ? TRUE : FALSE;
                     }),
                     this);
    gtk_widget_add_controller(widget_, GTK_EVENT_CONTROLLER(target_));
}

GTKDrop::~GTKDrop() {
    gtk_widget_remove_controller(widget_, GTK_EVENT_CONTROLLER(target_));
}

bool GTKDrop::send(NSDropPhase phase, const GValue* contents, double x, double y) {
    NSDrop drop{phase, {x, y}};
    if (contents != nullptr && G_VALUE_HOLDS(contents, GDK_TYPE_FILE_LIST)) {
        auto* const list = static_cast<GdkFileList*>(g_value_get_boxed(contents));
        GSList* const files = gdk_file_list_get_files(list);
        for (const GSList* file = files; file != nullptr; file = file->next) {
            // A file that is in no file system has no path.
            if (char* const path = g_file_get_path(G_FILE(file->data))) {
                drop.files.emplace_back(path);
                g_free(path);
            }
        }
        g_slist_free(files);
    } else if (contents != nullptr && G_VALUE_HOLDS_STRING(contents)) {
        const char* const text = g_value_get_string(contents);
        drop.text = text != nullptr ? text : "";
    }
    return send_(drop);
}

}  // namespace orvane::platform
