#pragma once

#include <functional>
#include <string>
#include <vector>

typedef struct _GtkWidget GtkWidget;

namespace orvane::platform {

struct NSFilePanel;

// Shows the desktop's dialog for files.
class GTKFilePanel {
public:
    enum class Kind { Open, Save };

    // The dialog belongs to the window of the widget, which may be null. Returns at once; the
    // completion gets the paths, none if the user cancels.
    static void run(const NSFilePanel& panel, Kind kind, GtkWidget* widget,
                    std::function<void(std::vector<std::string>)> completion);
};

}  // namespace orvane::platform
