#pragma once

#include <QAbstractListModel>
#include <QGraphicsPixmapItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsView>
#include <QListView>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <vector>

#include "bench/list/Rows.h"

// The rivals' rows: items of a QGraphicsScene, and a QListView with a delegate.
namespace bench {

inline const std::vector<QPixmap>& rivalPictures() {
    static std::vector<QPixmap> pictures;
    for (int i = static_cast<int>(pictures.size()); i < kPictures; ++i) {
        const std::string pixels = picturePixels(i);
        pictures.push_back(
            QPixmap::fromImage(QImage(reinterpret_cast<const uchar*>(pixels.data()), kPictureSide,
                                      kPictureSide, QImage::Format_RGBA8888)
                                   .convertToFormat(QImage::Format_RGB32)));
    }
    return pictures;
}

inline QFont rivalFont(int size) {
    QFont font("DejaVu Sans");
    font.setPixelSize(size);
    return font;
}

inline void addRivalRows(QGraphicsScene& scene) {
    const QFont large = rivalFont(15);
    const QFont small = rivalFont(12);
    for (int i = 0; i < kRows; ++i) {
        auto* const card = new QGraphicsRectItem(0, 0, kWidth, kRowHeight);
        card->setPos(0, static_cast<double>(i) * kRowHeight);
        card->setBrush(QColor::fromRgba(cardColor(i)));
        card->setPen(Qt::NoPen);
        auto* const above = new QGraphicsSimpleTextItem(QString::fromStdString(title(i)), card);
        above->setFont(large);
        above->setPos(72, 13);
        auto* const below = new QGraphicsSimpleTextItem(QString::fromStdString(subtitle(i)), card);
        below->setFont(small);
        below->setPos(72, 36);
        auto* const picture =
            new QGraphicsPixmapItem(rivalPictures()[static_cast<std::size_t>(i % kPictures)], card);
        picture->setPos(12, 8);
        scene.addItem(card);
    }
}

class RivalModel final : public QAbstractListModel {
public:
    int rowCount(const QModelIndex&) const override { return kRows; }
    QVariant data(const QModelIndex&, int) const override { return {}; }
};

class RivalDelegate final : public QStyledItemDelegate {
public:
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const int row = index.row();
        painter->fillRect(option.rect, QColor::fromRgba(cardColor(row)));
        painter->setPen(QColor(0x20, 0x20, 0x20));
        painter->setFont(large_);
        painter->drawText(option.rect.topLeft() + QPoint(72, 27),
                          QString::fromStdString(title(row)));
        painter->setPen(QColor(0x70, 0x70, 0x70));
        painter->setFont(small_);
        painter->drawText(option.rect.topLeft() + QPoint(72, 47),
                          QString::fromStdString(subtitle(row)));
        painter->drawPixmap(option.rect.topLeft() + QPoint(12, 8),
                            rivalPictures()[static_cast<std::size_t>(row % kPictures)]);
    }
    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return {kWidth, kRowHeight};
    }

private:
    QFont large_ = rivalFont(15);
    QFont small_ = rivalFont(12);
};

// A view of the base class that shows the rows, without a frame; scroll it with its vertical bar.
template <typename Base>
class RivalListView final : public Base {
public:
    RivalListView() {
        this->setFrameShape(QFrame::NoFrame);
        this->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        this->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        this->setWindowFlag(Qt::FramelessWindowHint);
        this->setGeometry(0, 0, kWidth, kHeight);
        if constexpr (std::is_same_v<Base, QGraphicsView>) {
            this->setRenderHint(QPainter::Antialiasing);
            addRivalRows(scene_);
            this->setScene(&scene_);
        } else {
            this->setUniformItemSizes(true);
            this->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
            this->setModel(&model_);
            this->setItemDelegate(&delegate_);
        }
    }
    int paints() const { return paints_; }
    void scrollBy(int distance) {
        QScrollBar& bar = *this->verticalScrollBar();
        bar.setValue(bar.value() + distance);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        Base::paintEvent(event);
        ++paints_;
    }

private:
    QGraphicsScene scene_{0, 0, kWidth, static_cast<double>(kRows) * kRowHeight};
    RivalModel model_;
    RivalDelegate delegate_;
    int paints_ = 0;
};

}  // namespace bench
