#pragma once

#include "platform/gtk/GTKPresentation.h"

namespace orvane::platform {

// Shows each view with a widget of its own (GTKView), whose pixels are textures. A GPU composes
// them: moving, rotating and fading a view uploads nothing.
class GTKTexturePresentation final : public GTKPresentation {
public:
    // The root is borrowed.
    explicit GTKTexturePresentation(GTKRoot& root) : root_(root) {}

    void add(NSView& view) override;
    void setControl(NSView& view, GTKControl* control) override;
    void reorder(NSView& superview) override;
    void change(NSView& view, unsigned changes, double time) override;
    void paint(NSView& view, std::span<const NSBackingRect> rects) override;
    void resize(CGSize size, double scale) override;
    void allocate() override;
    void snapshot(GtkSnapshot* snapshot) override;

private:
    GTKRoot& root_;
};

}  // namespace orvane::platform
