// Our side of the window's scenes: a display in a GTKWindow, as a host shows it.
//   bench_window move COUNT MOVING | turn COUNT | drag COUNT | idle COUNT | list RIVAL |
//                start DIRECTORY
#include <gtkmm/window.h>

#include <cstring>
#include <memory>
#include <optional>
#include <vector>

#include "bench/Ours.h"
#include "bench/list/OurRows.h"
#include "bench/window/GTKLoop.h"
#include "bench/window/Scenes.h"
#include "orvane/embedding/Session.h"
#include "platform/appkit/NSEvent.h"
#include "platform/gtk/GTKWindow.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace {

using namespace orvane::display;
using orvane::platform::CGSize;

class Drag final : public events::TouchEventListener {
public:
    events::TouchEventListenerState operator()(const std::shared_ptr<DisplayObject>& object,
                                               const events::TouchEvent& event) override {
        object->translate(static_cast<float>(event.delta.x), static_cast<float>(event.delta.y));
        return event.phase == events::TouchEventPhase::Ended
                   ? events::TouchEventListenerState::Ended
                   : events::TouchEventListenerState::Changed;
    }
};

// The window of a host.
class HostWindow {
public:
    explicit HostWindow(const std::string& applications) : session_(content_, applications) {
        toplevel_.set_decorated(false);
        toplevel_.set_child(content_.widget());
    }
    ~HostWindow() { toplevel_.unset_child(); }

    bool start() { return session_.start(); }
    void open() { toplevel_.present(); }
    Gtk::Window& toplevel() { return toplevel_; }
    orvane::platform::GTKWindow& content() { return content_; }

private:
    orvane::platform::GTKWindow content_{CGSize{bench::kWidth, bench::kHeight}};
    Gtk::Window toplevel_;
    orvane::embedding::Session session_;
};

// The main loop, with the window of a host.
template <typename Side>
class Hosted : public Side {
public:
    void run(double seconds, const std::function<void()>& tick) override {
        if (!loop_) {
            window_.open();
            loop_.emplace(GTK_WIDGET(window_.toplevel().gobj()));
        }
        bench::GTKLoop::run(seconds, bench::kTickMilliseconds, tick);
    }
    int framesShown() const override { return loop_->framesShown(); }

protected:
    HostWindow& window() { return window_; }

private:
    HostWindow window_{""};
    std::optional<bench::GTKLoop> loop_;
};

class OurList final : public Hosted<bench::WindowList> {
public:
    OurList() { Display::instance()->add(list_); }

    void scrollBy(int points) override {
        const auto offset = list_->getContentOffset();
        list_->setContentOffset({offset.x, offset.y + points});
    }

private:
    std::shared_ptr<graphics::ListContainer> list_ = bench::makeList(bench::kWidth, bench::kHeight);
};

class OurStage final : public Hosted<bench::WindowStage> {
public:
    OurStage() { Display::instance()->add(root_); }

    void addShape(int i) override {
        shapes_.push_back(bench::makeShape(i));
        bench::moveTo(*shapes_.back(), bench::place(i));
        root_->add(shapes_.back());
    }
    void move(int i, const bench::Place& place) override {
        bench::moveTo(*shapes_[static_cast<std::size_t>(i)], place);
    }
    void addTurning(int i) override {
        addShape(i);
        const auto animation = std::make_shared<animation::ValueAnimation>(
            "turn", animation::AttributeName::Rotation,
            std::vector<float>{0, static_cast<float>(2 * M_PI)});
        animation->setAnimatable(shapes_.back()->extractAnimationLayer());
        animation->setDuration(bench::kPass);
        animation->setRepeatCount(-1);
        animation->setAnchorPointX(0.5F);
        animation->setAnchorPointY(0.5F);
        animation->run();
    }
    void turn(double) override {}
    void makeDraggable(int i) override {
        shapes_[static_cast<std::size_t>(i)]->addListener<events::TouchEvent>(drag_);
    }
    void sendPointer(bench::Pointer what, const bench::Place& place) override {
        using orvane::platform::NSEventType;
        const NSEventType type = what == bench::Pointer::Press  ? NSEventType::LeftMouseDown
                                 : what == bench::Pointer::Drag ? NSEventType::LeftMouseDragged
                                                                : NSEventType::LeftMouseUp;
        window().content().sendEvent(
            {type, {place.x, place.y}, orvane::platform::CACurrentMediaTime()});
    }

private:
    std::shared_ptr<ContainerObject> root_ = DisplayFactory::createContainer();
    std::vector<std::shared_ptr<graphics::Shape>> shapes_;
    std::shared_ptr<Drag> drag_ = std::make_shared<Drag>();
};

int measureStart(const char* directory) {
    HostWindow window(directory);
    if (!window.start()) {
        return 1;
    }
    window.open();
    bench::GTKLoop loop(GTK_WIDGET(window.toplevel().gobj()));
    while (loop.framesShown() == 0 || window.content().needsDisplay()) {
        g_main_context_iteration(nullptr, TRUE);
    }
    bench::reportStart();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (!orvane::platform::GTKWindow::initialize()) {
        return 1;
    }
    if (argc > 2 && std::strcmp(argv[1], "start") == 0) {
        return measureStart(argv[2]);
    }
    if (argc > 2 && std::strcmp(argv[1], "list") == 0) {
        OurList list;
        bench::measureScrolling(list, argv[2]);
        return 0;
    }
    OurStage stage;
    bench::measureWindow(stage, argc, argv);
    return 0;
}
