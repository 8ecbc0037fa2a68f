// The rival: the same scenes on a QGraphicsView in a window, BSP index, antialiasing; a QTimer at
// the refresh rate changes them. The list is on a QGraphicsView or, as RIVAL says, on a QListView.
//   bench_window_rival move COUNT MOVING | turn COUNT | drag COUNT | idle COUNT | list RIVAL |
//   start
#include <QApplication>
#include <QEventLoop>
#include <QGraphicsEllipseItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QTimer>
#include <cstring>
#include <vector>

#include "bench/list/RivalRows.h"
#include "bench/window/Scenes.h"

namespace {

void runLoop(double seconds, const std::function<void()>& tick) {
    QEventLoop loop;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    if (tick) {
        QObject::connect(&timer, &QTimer::timeout, [&] { tick(); });
        timer.start(bench::kTickMilliseconds);
    }
    QTimer::singleShot(static_cast<int>(seconds * 1000), Qt::PreciseTimer, &loop,
                       &QEventLoop::quit);
    loop.exec();
}

class View final : public QGraphicsView {
public:
    View() : scene_(0, 0, bench::kWidth, bench::kHeight) {
        setScene(&scene_);
        setRenderHint(QPainter::Antialiasing);
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setWindowFlag(Qt::FramelessWindowHint);
        setGeometry(0, 0, bench::kWidth, bench::kHeight);
    }

    QGraphicsScene& items() { return scene_; }
    int paints() const { return paints_; }

protected:
    void paintEvent(QPaintEvent* event) override {
        QGraphicsView::paintEvent(event);
        ++paints_;
    }

private:
    QGraphicsScene scene_;
    int paints_ = 0;
};

class RivalStage final : public bench::WindowStage {
public:
    void addShape(int i) override {
        const double side = bench::kSide;
        QAbstractGraphicsShapeItem* item = nullptr;
        if (i % 2 == 0) {
            item = new QGraphicsRectItem(0, 0, side, side);
        } else {
            item = new QGraphicsEllipseItem(0, 0, side, side);
        }
        item->setBrush(QColor::fromRgba(bench::shapeColor(i)));
        item->setPen(QPen(Qt::black, 1));
        item->setPos(bench::place(i).x, bench::place(i).y);
        items_.push_back(item);
        view_.items().addItem(item);
    }
    void move(int i, const bench::Place& place) override {
        items_[static_cast<std::size_t>(i)]->setPos(place.x, place.y);
    }
    void addTurning(int i) override {
        addShape(i);
        items_.back()->setTransformOriginPoint(bench::kSide / 2, bench::kSide / 2);
        turning_ = true;
    }
    void turn(double radians) override {
        for (QGraphicsItem* const item : items_) {
            item->setRotation(radians * 180 / M_PI);
        }
    }
    void makeDraggable(int i) override {
        items_[static_cast<std::size_t>(i)]->setFlag(QGraphicsItem::ItemIsMovable);
    }
    void sendPointer(bench::Pointer what, const bench::Place& place) override {
        const bool pressed = what != bench::Pointer::Release;
        QMouseEvent event(what == bench::Pointer::Press  ? QEvent::MouseButtonPress
                          : what == bench::Pointer::Drag ? QEvent::MouseMove
                                                         : QEvent::MouseButtonRelease,
                          {place.x, place.y},
                          view_.viewport()->mapToGlobal(QPointF(place.x, place.y)),
                          what == bench::Pointer::Drag ? Qt::NoButton : Qt::LeftButton,
                          pressed ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view_.viewport(), &event);
    }
    void run(double seconds, const std::function<void()>& tick) override {
        if (!view_.isVisible()) {
            if (turning_) {
                view_.items().setItemIndexMethod(QGraphicsScene::NoIndex);
            }
            view_.show();
        }
        runLoop(seconds, tick);
    }
    int framesShown() const override { return view_.paints(); }

private:
    View view_;
    std::vector<QGraphicsItem*> items_;  // the scene's
    bool turning_ = false;
};

template <typename Base>
class RivalList final : public bench::WindowList {
public:
    void scrollBy(int points) override { view_.scrollBy(points); }
    void run(double seconds, const std::function<void()>& tick) override {
        view_.show();
        runLoop(seconds, tick);
    }
    int framesShown() const override { return view_.paints(); }

private:
    bench::RivalListView<Base> view_;
};

// The same picture as examples/hello: a circle that can be dragged.
void measureStart() {
    View view;
    QGraphicsItem* const ball =
        view.items().addEllipse(100, 100, 160, 160, Qt::NoPen, QColor::fromRgb(0xF2545BU));
    ball->setFlag(QGraphicsItem::ItemIsMovable);
    view.show();
    while (view.paints() == 0) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
    bench::reportStart();
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication app(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], "start") == 0) {
        measureStart();
        return 0;
    }
    if (argc > 2 && std::strcmp(argv[1], "list") == 0) {
        if (std::strcmp(argv[2], "delegate") == 0) {
            RivalList<QListView> list;
            bench::measureScrolling(list, argv[2]);
        } else {
            RivalList<QGraphicsView> list;
            bench::measureScrolling(list, argv[2]);
        }
        return 0;
    }
    RivalStage stage;
    bench::measureWindow(stage, argc, argv);
}
