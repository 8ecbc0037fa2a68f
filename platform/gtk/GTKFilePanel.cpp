#include "platform/gtk/GTKFilePanel.h"

#include <gtk/gtk.h>

#include <memory>
#include <utility>

#include "platform/appkit/NSDesktop.h"

namespace orvane::platform {

namespace {

using Completion = std::function<void(std::vector<std::string>)>;

GtkFileChooserAction actionOf(const NSFilePanel& panel, GTKFilePanel::Kind kind) {
    if (kind == GTKFilePanel::Kind::Save) {
        return GTK_FILE_CHOOSER_ACTION_SAVE;
    }
    return panel.choosesFolders ? GTK_FILE_CHOOSER_ACTION_SELECT_FOLDER
                                : GTK_FILE_CHOOSER_ACTION_OPEN;
}

std::vector<std::string> chosenPaths(GtkFileChooser* chooser) {
    std::vector<std::string> paths;
    GListModel* const files = gtk_file_chooser_get_files(chooser);
    for (guint i = 0; i < g_list_model_get_n_items(files); ++i) {
        auto* const file = static_cast<GFile*>(g_list_model_get_item(files, i));
        // A file that is in no file system has no path.
        if (char* const path = g_file_get_path(file)) {
            paths.emplace_back(path);
            g_free(path);
        }
        g_object_unref(file);
    }
    g_object_unref(files);
    return paths;
}

void respond(GtkNativeDialog* dialog, int response, Completion* place) {
    const std::unique_ptr<Completion> completion(place);
    (*completion)(response == GTK_RESPONSE_ACCEPT ? chosenPaths(GTK_FILE_CHOOSER(dialog))
                                                  : std::vector<std::string>());
    g_object_unref(dialog);
}

}  // namespace

void GTKFilePanel::run(const NSFilePanel& panel, Kind kind, GtkWidget* widget,
                       Completion completion) {
    GtkRoot* const root = widget != nullptr ? gtk_widget_get_root(widget) : nullptr;
    GtkFileChooserNative* const dialog = gtk_file_chooser_native_new(
        panel.title.empty() ? nullptr : panel.title.c_str(),
        root != nullptr ? GTK_WINDOW(root) : nullptr, actionOf(panel, kind), nullptr, nullptr);
    auto* const chooser = GTK_FILE_CHOOSER(dialog);
    gtk_native_dialog_set_modal(GTK_NATIVE_DIALOG(dialog), TRUE);
    gtk_file_chooser_set_select_multiple(chooser,
                                         kind == Kind::Open && panel.choosesSeveral ? TRUE : FALSE);
    if (!panel.folder.empty()) {
        GFile* const folder = g_file_new_for_path(panel.folder.c_str());
        gtk_file_chooser_set_current_folder(chooser, folder, nullptr);
        g_object_unref(folder);
    }
    if (kind == Kind::Save && !panel.name.empty()) {
        gtk_file_chooser_set_current_name(chooser, panel.name.c_str());
    }
    for (const NSFilePanel::Filter& each : panel.filters) {
        GtkFileFilter* const filter = gtk_file_filter_new();
        gtk_file_filter_set_name(filter, each.name.c_str());
        for (const std::string& pattern : each.patterns) {
            gtk_file_filter_add_pattern(filter, pattern.c_str());
        }
        gtk_file_chooser_add_filter(chooser, filter);
        g_object_unref(filter);
    }
    g_signal_connect(dialog, "response", G_CALLBACK(&respond),
                     new Completion(std::move(completion)));
    gtk_native_dialog_show(GTK_NATIVE_DIALOG(dialog));
}

}  // namespace orvane::platform
