// The rival: the same scenes on QGraphicsView, BSP index, antialiasing.
//   bench_scene_rival shapes|text|images N
#include <QGraphicsEllipseItem>
#include <QGraphicsPixmapItem>
#include <QGraphicsRectItem>
#include <QGraphicsSimpleTextItem>
#include <cstdlib>
#include <vector>

#include "bench/Rival.h"
#include "bench/scene/Scene.h"

namespace {

QGraphicsItem* makeShape(int i) {
    const double side = bench::kSide;
    QAbstractGraphicsShapeItem* item = nullptr;
    if (i % 2 == 0) {
        item = new QGraphicsRectItem(0, 0, side, side);
    } else {
        item = new QGraphicsEllipseItem(0, 0, side, side);
    }
    item->setBrush(QColor::fromRgba(bench::shapeColor(i)));
    item->setPen(QPen(Qt::black, 1));
    return item;
}

QGraphicsItem* makeText(int i) {
    auto* const item = new QGraphicsSimpleTextItem(QString::fromStdString(bench::line(i)));
    QFont font("DejaVu Sans");
    font.setPixelSize(13);
    item->setFont(font);
    return item;
}

QGraphicsItem* makeImage(int i) {
    const std::string pixels = bench::imagePixels(i);
    const QImage image(reinterpret_cast<const uchar*>(pixels.data()), bench::kImageSide,
                       bench::kImageSide, QImage::Format_RGBA8888);
    return new QGraphicsPixmapItem(QPixmap::fromImage(image));
}

class RivalStage final : public bench::Stage {
public:
    void add(bench::Kind kind, int i) override {
        items_.push_back(kind == bench::Kind::Shapes ? makeShape(i)
                         : kind == bench::Kind::Text ? makeText(i)
                                                     : makeImage(i));
        view_.items().addItem(items_.back());
    }
    void move(int i, const bench::Place& place) override {
        items_[static_cast<std::size_t>(i)]->setPos(place.x, place.y);
    }
    void invalidate() override { view_.viewport()->update(); }
    void paint() override { view_.paintOnce(); }

private:
    bench::RivalView view_{QGraphicsScene::BspTreeIndex};
    std::vector<QGraphicsItem*> items_;  // the scene's
};

}  // namespace

int main(int argc, char** argv) {
    const bench::RivalApplication app(argc, argv);
    RivalStage stage;
    bench::measure(stage, argc > 1 ? argv[1] : "shapes", argc > 2 ? std::atoi(argv[2]) : 1000);
}
