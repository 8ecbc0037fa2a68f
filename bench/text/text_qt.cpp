// The rival: the same lines and images on QGraphicsView, BSP index, antialiasing, off-screen.
#include <QApplication>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsView>
#include <functional>
#include <vector>

#include "bench/Measure.h"
#include "bench/text/text.h"

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

void run(QApplication& app, const std::string& scene, int count,
         const std::function<QGraphicsItem*(int)>& make) {
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

    std::vector<QGraphicsItem*> items;
    const auto move = [&](int i, const bench::Place& place) {
        items[static_cast<std::size_t>(i)]->setPos(place.x, place.y);
    };
    bench::report(scene, "build_and_first_paint_ms", bench::milliseconds([&] {
                      for (int i = 0; i < count; ++i) {
                          items.push_back(make(i));
                          move(i, bench::place(i));
                          graphics.addItem(items.back());
                      }
                      paintOnce();
                  }));
    bench::report(scene, "full_repaint_ms", bench::median(9, [&] {
                      view.viewport()->update();
                      paintOnce();
                  }));
    for (const int moving : {1, 100}) {
        const std::vector<int> movers = bench::movers(count, moving);
        int frame = 0;
        const auto step = [&] {
            ++frame;
            for (const int i : movers) {
                move(i, bench::movedPlace(i, frame));
            }
            paintOnce();
        };
        step();
        bench::report(scene, moving == 1 ? "frame_1_moves_ms" : "frame_100_move_ms",
                      bench::median(bench::kFrames, step));
    }
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    for (const int count : {1000, 10000}) {
        run(app, "text=" + std::to_string(count), count, makeText);
        run(app, "images=" + std::to_string(count), count, makeImage);
    }
    return 0;
}
