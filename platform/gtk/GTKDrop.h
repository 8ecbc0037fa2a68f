#pragma once

#include <functional>

typedef struct _GtkDropTarget GtkDropTarget;
typedef struct _GtkWidget GtkWidget;
typedef struct _GValue GValue;

namespace orvane::platform {

enum class NSDropPhase;
struct NSDrop;

// Turns drags of files and texts from other programs over a widget into NSDrop. Main thread only.
class GTKDrop {
public:
    // The widget is borrowed and must outlive this object. `send` returns whether a view takes the
    // drag.
    GTKDrop(GtkWidget* widget, std::function<bool(const NSDrop&)> send);
    ~GTKDrop();
    GTKDrop(const GTKDrop&) = delete;
    GTKDrop& operator=(const GTKDrop&) = delete;

private:
    bool send(NSDropPhase phase, const GValue* contents, double x, double y);

    GtkWidget* widget_;
    std::function<bool(const NSDrop&)> send_;
    GtkDropTarget* target_;
};

}  // namespace orvane::platform
