#pragma once

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>

#include "bench/Measure.h"

// The rival's side of the scenes: a QGraphicsScene in a view of the same size, off-screen.
namespace bench {

// The application object that everything else of the rival needs; for one main().
class RivalApplication {
public:
    RivalApplication(int& argc, char** argv) : app_((useOffscreen(), argc), argv) {}

private:
    static void useOffscreen() { qputenv("QT_QPA_PLATFORM", "offscreen"); }

    QApplication app_;
};

class RivalView : public QGraphicsView {
public:
    explicit RivalView(QGraphicsScene::ItemIndexMethod index) : scene_(0, 0, kWidth, kHeight) {
        scene_.setItemIndexMethod(index);
        setScene(&scene_);
        setRenderHint(QPainter::Antialiasing);
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        resize(kWidth, kHeight);
        show();
        QCoreApplication::processEvents();
        viewport()->update();
        paintOnce();
    }

    QGraphicsScene& items() { return scene_; }

    // Returns when the view has painted; something must be invalid.
    void paintOnce() {
        const int before = paints_;
        while (paints_ == before) {
            QCoreApplication::processEvents();
        }
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        QGraphicsView::paintEvent(event);
        ++paints_;
    }

private:
    QGraphicsScene scene_;
    int paints_ = 0;
};

}  // namespace bench
