// The rivals of bench_list: QGraphicsView with the same rows, QListView with a delegate.
//   bench_list_rival view|delegate
#include <QApplication>
#include <cstring>
#include <memory>

#include "bench/list/RivalRows.h"

namespace {

template <typename Base>
void measure(const char* scene) {
    std::unique_ptr<bench::RivalListView<Base>> view;
    const auto paint = [&](int before) {
        while (view->paints() == before) {
            QCoreApplication::processEvents();
        }
    };
    bench::measureList(
        scene,
        [&] {
            view = std::make_unique<bench::RivalListView<Base>>();
            view->show();
            paint(0);
        },
        [&] {
            const int before = view->paints();
            view->scrollBy(bench::kNotch);
            paint(before);
        });
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], "delegate") == 0) {
        measure<QListView>("list_delegate");
    } else {
        measure<QGraphicsView>("list_view");
    }
}
