#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvane/inspector/Inspector.h"
#include "orvane/inspector/Meter.h"
#include "orvane/inspector/Overlay.h"
#include "orvane/inspector/Plot.h"
#include "orvane/inspector/PropertyPanel.h"
#include "orvane/inspector/Tree.h"
#include "orvane/inspector/TreeList.h"
#include "orvane/inspector/widgets.h"
#include "platform/quartzcore/CATimer.h"

namespace orvane::embedding {
class HostView;
}

namespace orvane::inspector {

// The content of the inspector's window, and the parts that it connects: the tree, the properties
// of what is chosen, the plots, and the overlay over the application.
class InspectorWindow final : public Inspector {
public:
    InspectorWindow(platform::NSWindow& application, platform::NSWindow& window);
    ~InspectorWindow() override;

    void resize(platform::CGSize size) override;
    void refresh() override;
    void chooseFirst(const std::string& text) override;
    std::shared_ptr<display::Display> getDisplay() const override { return display_; }

private:
    std::shared_ptr<display::layout::Box> makeToolbar();
    std::shared_ptr<display::layout::Box> makeMiddle();
    std::shared_ptr<display::layout::Box> makePlots();

    void showTree();
    void showKind(Tree::Kind kind);
    void showPlots();
    void chooseWanted();
    void filter(const std::string& text);
    // By value: a row that changes in this function may own the argument.
    void choose(Node node, bool shows);
    void hover(const Node& node);
    void setPicking(bool isPicking);
    void pick(platform::CGPoint point, bool isPressed);
    void framePainted(const Overlay::Rects& rects);
    // Where a node is in the application's window; none if it cannot be seen.
    static std::optional<platform::CGRect> frameOf(const Node& node);
    Overlay::Rects layerFrames() const;

    platform::NSWindow& application_;
    platform::NSWindow& window_;
    std::shared_ptr<display::Display> display_;
    std::shared_ptr<embedding::HostView> view_;
    std::shared_ptr<display::layout::Box> page_;

    Tree tree_;
    std::string wanted_;  // chosen as soon as there is an object that matches
    Node chosen_;
    Node hovered_;
    unsigned refreshes_ = 0;

    std::shared_ptr<Button> pick_;
    std::shared_ptr<Button> flashes_;
    std::shared_ptr<Button> damage_;
    std::shared_ptr<Button> borders_;
    std::shared_ptr<Button> objects_;
    std::shared_ptr<Button> layers_;
    std::shared_ptr<display::graphics::InputText> search_;
    std::shared_ptr<display::graphics::InputText::ChangeEvent::listener_type> searched_;
    TreeList list_;
    PropertyPanel panel_;
    Plot rate_;
    Plot times_;
    Plot memory_;

    Overlay overlay_;
    Meter meter_;
    platform::CATimer timer_;
};

}  // namespace orvane::inspector
