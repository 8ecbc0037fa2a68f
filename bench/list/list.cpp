// 100,000 rows, scrolled by a notch a frame, off-screen.
//   bench_list view|delegate
// The rows are the same; the names are those of the rivals.
#include "bench/Ours.h"
#include "bench/list/OurRows.h"

int main(int argc, char** argv) {
    bench::DisplayWindow window;
    std::shared_ptr<orvane::display::graphics::ListContainer> list;
    bench::measureList(
        std::string("list_") + (argc > 1 ? argv[1] : "view"),
        [&] {
            list = bench::makeList(bench::kWidth, bench::kHeight);
            window.add(list);
            window.paint();
        },
        [&] {
            const auto offset = list->getContentOffset();
            list->setContentOffset({offset.x, offset.y + bench::kNotch});
            window.paint();
        });
}
