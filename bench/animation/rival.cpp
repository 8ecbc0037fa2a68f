// The rival: the same things as items of a QGraphicsView, animated by QPropertyAnimations, whose
// clock is stepped as ours is.
#include <QGraphicsObject>
#include <QPainter>
#include <QParallelAnimationGroup>
#include <QPropertyAnimation>
#include <string>

#include "bench/Rival.h"
#include "bench/animation/Motions.h"

namespace {

class Item : public QGraphicsObject {
public:
    explicit Item(int i) : isRect_(i % 2 == 0), brush_(QColor::fromRgba(bench::shapeColor(i))) {
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

void run(int count) {
    bench::RivalView view(QGraphicsScene::NoIndex);
    QParallelAnimationGroup animations;
    for (int i = 0; i < count; ++i) {
        auto* const item = new Item(i);
        const bench::Place place = bench::place(i);
        item->setPos(place.x, place.y);
        view.items().addItem(item);
        QPropertyAnimation* const animation = makeAnimation(item, bench::motion(i));
        animation->setDuration(static_cast<int>(bench::kPass * 1000));
        animation->setLoopCount(-1);
        animations.addAnimation(animation);
    }
    // The benchmark sets the time. A paused group does not follow the wall clock.
    animations.start();
    animations.pause();
    view.paintOnce();
    double time = 0;
    bench::report("layers=" + std::to_string(count), "animated_frame_ms",
                  bench::median(bench::kFrames, [&] {
                      time += bench::kFrame;
                      animations.setCurrentTime(static_cast<int>(time * 1000));
                      view.paintOnce();
                  }));
    animations.clear();
    // An item must be out of the scene's index before its own class is destroyed.
    for (QGraphicsItem* const item : view.items().items()) {
        view.items().removeItem(item);
        delete item;
    }
}

}  // namespace

int main(int argc, char** argv) {
    const bench::RivalApplication app(argc, argv);
    for (const int count : bench::kCounts) {
        run(count);
    }
    return 0;
}
