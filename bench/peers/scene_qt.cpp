// The rival: the same scene on QGraphicsView, BSP index, antialiasing, off-screen.
//   bench_scene_qt N
#include <QApplication>
#include <QGraphicsEllipseItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <cstdlib>
#include <vector>

#include "bench/Measure.h"

namespace {

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

QGraphicsItem* makeItem(int i) {
    const double side = bench::kSide;
    QAbstractGraphicsShapeItem* item = nullptr;
    if (i % 2 == 0) {
        item = new QGraphicsRectItem(0, 0, side, side);
    } else {
        item = new QGraphicsEllipseItem(0, 0, side, side);
    }
    item->setBrush(QColor::fromRgba(0xFF000000U | static_cast<unsigned>(i) * 2654435761U >> 8U));
    item->setPen(QPen(Qt::black, 1));
    const bench::Place place = bench::place(i);
    item->setPos(place.x, place.y);
    return item;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int count = argc > 1 ? std::atoi(argv[1]) : 1000;
    const std::string scene = "N=" + std::to_string(count);

    QGraphicsScene graphics(0, 0, bench::kWidth, bench::kHeight);
    graphics.setItemIndexMethod(QGraphicsScene::BspTreeIndex);
    View view(&graphics);
    view.setRenderHint(QPainter::Antialiasing);
    view.setFrameShape(QFrame::NoFrame);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.resize(bench::kWidth, bench::kHeight);
    view.show();
    const auto paintOnce = [&] {
        const int before = view.paints;
        while (view.paints == before) {
            app.processEvents();
        }
    };
    app.processEvents();
    view.viewport()->update();
    paintOnce();

    const double before = bench::heapBytes();
    std::vector<QGraphicsItem*> items;
    items.reserve(static_cast<std::size_t>(count));
    bench::report(scene, "build_and_first_paint_ms", bench::milliseconds([&] {
                      for (int i = 0; i < count; ++i) {
                          items.push_back(makeItem(i));
                          graphics.addItem(items.back());
                      }
                      paintOnce();
                  }));

    bench::report(scene, "full_repaint_ms", bench::median(count > 50000 ? 3 : 9, [&] {
                      view.viewport()->update();
                      paintOnce();
                  }));

    bench::report(scene, "bytes_an_object", (bench::heapBytes() - before) / count);

    for (const int moving : {1, 100}) {
        const std::vector<int> movers = bench::movers(count, moving);
        int frame = 0;
        const auto step = [&] {
            ++frame;
            for (const int i : movers) {
                const bench::Place place = bench::movedPlace(i, frame);
                items[static_cast<std::size_t>(i)]->setPos(place.x, place.y);
            }
            paintOnce();
        };
        step();
        bench::report(scene, moving == 1 ? "frame_1_moves_ms" : "frame_100_move_ms",
                      bench::median(bench::kFrames, step));
    }
    return 0;
}
