// The rival: the same things as items of a QGraphicsView, animated by QPropertyAnimations, whose
// clock is stepped as ours is.
#include <QApplication>
#include <QGraphicsObject>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainter>
#include <QParallelAnimationGroup>
#include <QPropertyAnimation>
#include <string>

#include "bench/animation/Motions.h"

namespace {

class Item : public QGraphicsObject {
public:
    explicit Item(int i)
        : isRect_(i % 2 == 0),
          brush_(QColor::fromRgba(0xFF000000U | static_cast<unsigned>(i) * 2654435761U >> 8U)) {
        setTransformOriginPoint(bench::kSide / 2, bench::kSide / 2);
    }

    QRectF boundingRect() const override {
        return {-0.5, -0.5, bench::kSide + 1, bench::kSide + 1};
    }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) override {
        painter->setPen(QPen(Qt::black, 1));
        painter->setBrush(brush_);
        const QRectF box(0, 0, bench::kSide, bench::kSide);
        if (isRect_) {
            painter->drawRect(box);
        } else {
            painter->drawEllipse(box);
        }
    }

private:
    bool isRect_;
    QBrush brush_;
};

class View : public QGraphicsView {
public:
    using QGraphicsView::QGraphicsView;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent* event) override {
        QGraphicsView::paintEvent(event);
        ++paints;
    }
};

QPropertyAnimation* makeAnimation(Item* item, bench::Motion motion) {
    const auto make = [item](const char* property, const auto& values, const auto& toVariant) {
        auto* const animation = new QPropertyAnimation(item, property);
        for (std::size_t i = 0; i < values.size(); ++i) {
            animation->setKeyValueAt(
                static_cast<double>(i) / static_cast<double>(values.size() - 1),
                toVariant(values[i]));
        }
        return animation;
    };
    switch (motion) {
        case bench::Motion::Move: {
            const QPointF home = item->pos();
            return make("pos", bench::kMoves, [home](const bench::Place& place) {
                return QVariant(home + QPointF(place.x, place.y));
            });
        }
        case bench::Motion::Turn:
            return make("rotation", bench::kTurns,
                        [](double radians) { return QVariant(radians * 180 / std::numbers::pi); });
        case bench::Motion::Fade:
            break;
    }
    return make("opacity", bench::kFades, [](double opacity) { return QVariant(opacity); });
}

void run(QApplication& app, int count) {
    QGraphicsScene graphics(0, 0, bench::kWidth, bench::kHeight);
    View view(&graphics);
    view.setRenderHint(QPainter::Antialiasing);
    view.setFrameShape(QFrame::NoFrame);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.resize(bench::kWidth, bench::kHeight);
    view.show();

    QParallelAnimationGroup animations;
    for (int i = 0; i < count; ++i) {
        auto* const item = new Item(i);
        const bench::Place place = bench::place(i);
        item->setPos(place.x, place.y);
        graphics.addItem(item);
        QPropertyAnimation* const animation = makeAnimation(item, bench::motion(i));
        animation->setDuration(static_cast<int>(bench::kPass * 1000));
        animation->setLoopCount(-1);
        animations.addAnimation(animation);
    }
    // The time is set by hand; paused, the group does not follow the wall clock.
    animations.start();
    animations.pause();
    for (int i = 0; i < 10; ++i) {
        app.processEvents();
    }
    double time = 0;
    bench::report("layers=" + std::to_string(count), "animated_frame_ms",
                  bench::median(bench::kFrames, [&] {
                      time += bench::kFrame;
                      animations.setCurrentTime(static_cast<int>(time * 1000));
                      const int before = view.paints;
                      while (view.paints == before) {
                          app.processEvents();
                      }
                  }));
    animations.clear();
    // An item must be out of the scene's index before its own class is destroyed.
    for (QGraphicsItem* const item : graphics.items()) {
        graphics.removeItem(item);
        delete item;
    }
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    for (const int count : bench::kCounts) {
        run(app, count);
    }
    return 0;
}
