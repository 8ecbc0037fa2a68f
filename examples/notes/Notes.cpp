#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <optional>
#include <utility>

#include "Board.h"
#include "Parts.h"

namespace notes {

using events::KeyEvent;
using events::PointerEvent;
using events::PointerPhase;
using graphics::InputText;

constexpr double kMargin = 28;
constexpr double kGap = 18;
constexpr double kTop = 104;
constexpr double kPadding = 14;
constexpr double kDragStart = 4;  // how far the pointer moves before a note follows it
constexpr Board::Place kEnd{0, std::numeric_limits<std::size_t>::max()};  // of the first column

const char* const kFirst = R"([["Buy coffee","Write to Aunt Ida","Fix the bicycle light"],
    ["Plan the trip to the coast:\ntrain, tent, tide table"],["Water the plants"]])";

static std::string fileName() {
    return orvane::system::getDocumentsDirectory() + "/notes.json";
}

// A board of notes. It is drawn again after every change.
class Notes {
public:
    void main() {
        if (std::ifstream file(fileName()); file) {
            board_ = Board(nlohmann::json::parse(file));
        }
        const auto window = display_->getWindow();
        window->setTitle("Notes");
        window->setApplicationId("org.example.notes");
        window->setMinimumSize({640, 420});
        lasting_.add<events::CloseRequestEvent>(*window, [this](const auto&) { return close(); });
        lasting_.add<FrameChangedEvent>(*display_, [this](const auto&) { draw(); });
        lasting_.add<AppearanceChangedEvent>(*display_, [this](const auto&) { draw(); });
        lasting_.add<events::DisplayKeyEvent>(*display_,
                                              [this](const auto& event) { return key(event); });
        addShortcut("Ctrl+N", [this] { edit(0); });
        addShortcut("Ctrl+C", [this] { orvane::system::copyText(board_.textOf(focusedNote())); });
        addShortcut("Ctrl+V", [this] { paste(); });
        display_->add(page_);
        draw();
    }

private:
    struct Card {
        int id = 0;
        Container object;
        Board::Place place;
        geometry::Rect<double> frame;
    };

    // ---- what is shown ----
    void draw() {
        const UpdateLock lock(page_);
        palette_ = Palette::of(display_->getAppearance());
        scale_ = float(display_->getAppearance().textScale);
        const int focused = focused_ != 0 ? std::exchange(focused_, 0) : focusedNote();
        page_->clear();
        listeners_.clear();
        cards_.clear();
        columns_.clear();
        stops_.clear();
        const auto size = display_->getScreenSize();
        page_->add(makePanel(0, 0, size.width, size.height, 0, palette_.paper));
        drawHeader(size.width);
        width_ = (size.width - 2 * kMargin - 2 * kGap) / 3;
        for (std::size_t i = 0; i < Board::kColumns.size(); ++i) {
            drawColumn(i, size.height - kTop - kMargin);
        }
        focusNote(focused);
        // Assistive technology finds the dialog only, as long as there is one.
        page_->getOrCreateAccessibilityElement()->setHidden(dialog_.has_value());
        if (dialog_) {
            drawDialog(dialog_->id, dialog_->field->getContent());
        }
    }

    void drawHeader(double width) {
        const auto title = makeText("Notes", kMargin, 58, 28 * scale_, palette_.ink, true);
        title->getOrCreateAccessibilityElement()->setRole(AccessibilityRole::Heading);
        page_->add(title);
        const char* const status = isSaved_ ? "Saved" : "Not saved yet";
        status_ = makeText(status, kMargin, 84, 13 * scale_, palette_.caption);
        page_->add(status_);
        const auto button = makeButton("New note", width - kMargin - 120, 36, 120, palette_, true,
                                       listeners_, [this] { edit(0); });
        page_->add(button);
        stops_.push_back(button);
    }

    void drawColumn(std::size_t number, double height) {
        const double left = kMargin + static_cast<double>(number) * (width_ + kGap);
        const std::string name = Board::kColumns[number];
        const Container column = DisplayFactory::createContainer();
        column->getOrCreateAccessibilityElement()->setRole(AccessibilityRole::List);
        column->getAccessibilityElement()->setLabel(name);
        columns_.push_back(makePanel(left, kTop, width_, height, 14, palette_.column));
        column->add(columns_.back());
        column->add(makeText(name + "  " + std::to_string(board_.column(number).size()),
                             left + kPadding, kTop + 28, 14 * scale_, palette_.caption, true));
        listeners_.add<events::DropEvent>(*column, [this, number](const events::DropEvent& event) {
            if (event.phase == events::DropPhase::Drop) {
                board_.add(event.text, {number, placeAt(event.location, 0).row});
                changed();
            }
            return event.files.empty();
        });
        page_->add(column);
        double top = kTop + 44;
        std::size_t row = 0;
        for (const Board::Note& note : board_.column(number)) {
            top += drawCard(note, {number, row++}, left + kPadding, top, *column) + 10;
        }
    }

    // Returns its height.
    double drawCard(const Board::Note& note, const Board::Place& place, double left, double top,
                    graphics::Container& column) {
        const double width = width_ - 2 * kPadding;
        const auto card = DisplayFactory::createContainer();
        const auto text = makeText(note.text, 18, 12, 14 * scale_, palette_.ink, false, width - 32);
        const double height = std::max(text->getTextBounds().height, 18.0 * scale_) + 24;
        const auto panel = makePanel(0, 0, width, height, 10, palette_.card);
        panel->setStrokeColor(palette_.edge);
        panel->setStrokeWidth(1);
        card->add(panel);
        card->add(makePanel(8, 12, 3, height - 24, 1.5F, palette_.accent));
        card->add(text);
        card->setTranslate(float(left), float(top));
        card->setCursor(Cursor::Grab);
        const int id = note.id;
        const auto element = card->getOrCreateAccessibilityElement();
        element->setRole(AccessibilityRole::Button);
        element->setLabel(note.text);
        element->setAction(AccessibilityAction::Press, [this, id] { edit(id); });
        addFocusRing(*card, width, height, palette_, listeners_);
        listeners_.add<PointerEvent>(*card,
                                     [this, id](const auto& event) { return pointer(id, event); });
        listeners_.add<KeyEvent>(*card, [this, id](const auto& event) { return key(id, event); });
        column.add(card);
        cards_.push_back({id, card, place, {left, top, width, height}});
        stops_.push_back(card);
        return height;
    }

    // ---- the focus ----
    int focusedNote() const {
        const auto found = std::ranges::find(cards_, display_->getFocus(), &Card::object);
        return found != cards_.end() ? found->id : 0;
    }

    void focusNote(int id) {
        const auto found = std::ranges::find(cards_, id, &Card::id);
        display_->setFocus(found != cards_.end() ? found->object : display_->getFocus());
    }

    // Tab goes from one stop to the next, in the dialog while there is one.
    bool key(const KeyEvent& event) {
        if (dialog_ && event.key == "Escape") {
            closeDialog();
        }
        if (event.phase == events::KeyPhase::Up || event.key != "Tab") {
            return false;
        }
        const auto& stops = dialog_ ? dialog_->stops : stops_;
        const auto size = static_cast<std::ptrdiff_t>(stops.size());
        const auto now = std::ranges::find(stops, display_->getFocus()) - stops.begin();
        const bool isBack = (event.modifiers & events::kShift) != 0;
        const auto next = now == size ? 0 : (now + (isBack ? size - 1 : 1)) % size;
        display_->setFocus(stops[static_cast<std::size_t>(next)]);
        return true;
    }

    // A key for a note: arrows go to its neighbors, and move it while Alt is held down.
    bool key(int id, const KeyEvent& event) {
        const auto place = board_.find(id);
        if (event.phase == events::KeyPhase::Up || !place || dialog_) {
            return false;
        }
        if (event.key == "Return") {
            edit(id);
        } else if (event.key == "Delete") {
            board_.remove(id);
            changed();
        }
        const int across = event.key == "Right" ? 1 : event.key == "Left" ? -1 : 0;
        const int down = event.key == "Down" ? 1 : event.key == "Up" ? -1 : 0;
        // What is before the first row is a very large number, which means the last one.
        const Board::Place target{place->column + static_cast<std::size_t>(across),
                                  place->row + static_cast<std::size_t>(down)};
        if (across == down || target.column >= Board::kColumns.size()) {
            return event.key == "Return" || event.key == "Delete";
        }
        if ((event.modifiers & events::kAlt) != 0) {
            board_.move(id, target);
            changed();
        } else if (const auto& notes = board_.column(target.column); !notes.empty()) {
            focusNote(notes[std::min(target.row, notes.size() - 1)].id);
        }
        return true;
    }

    // ---- dragging ----
    bool pointer(int id, const PointerEvent& event) {
        const auto card = std::ranges::find(cards_, id, &Card::id);
        if (card == cards_.end() || dialog_) {
            return false;
        }
        if (event.phase == PointerPhase::Down && event.button == events::PointerButton::Left) {
            display_->setFocus(card->object);
            grip_ = event.location;
        }
        if (!grip_ || event.clickCount == 2) {
            grip_.reset();
            if (event.clickCount == 2 && event.phase == PointerPhase::Down) {
                edit(id);
            }
            return event.clickCount == 2;
        }
        const auto way = event.location - *grip_;
        if (event.phase == PointerPhase::Up || event.phase == PointerPhase::Cancel) {
            grip_.reset();
            if (std::exchange(isDragging_, false)) {
                board_.move(id, placeAt(event.location, id));
                changed();
            }
        } else if (isDragging_ || std::abs(way.x) + std::abs(way.y) > kDragStart) {
            if (!std::exchange(isDragging_, true)) {  // above everything
                DeleteDisplayObject(card->object);
                page_->add(card->object);
            }
            card->object->setTranslate(float(card->frame.x + way.x), float(card->frame.y + way.y));
            highlight(placeAt(event.location, id).column);
        }
        return true;
    }

    // Where a note that is released at a point belongs.
    Board::Place placeAt(const geometry::Point<double>& point, int dragged) const {
        const double column = (point.x - kMargin + kGap / 2) / (width_ + kGap);
        Board::Place place{static_cast<std::size_t>(std::clamp(column, 0.0, 2.0)), 0};
        for (const Card& card : cards_) {
            const bool isAbove = card.frame.y + card.frame.height / 2 < point.y;
            place.row += card.id != dragged && card.place.column == place.column && isAbove ? 1 : 0;
        }
        return place;
    }

    void highlight(std::size_t column) {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            columns_[i]->setFillColor(column == i ? palette_.edge : palette_.column);
        }
    }

    // ---- commands ----
    void addShortcut(const std::string& keys, const Action& action) {
        shortcuts_.push_back(display_->addShortcut(keys, [this, action] {
            if (!dialog_) {
                action();
            }
        }));
    }

    void paste() {
        const auto place = board_.find(focusedNote()).value_or(Board::Place{});
        orvane::system::pasteText([this, place](const std::string& text) {
            if (!text.empty()) {
                focused_ = board_.add(text, place);
                changed();
            }
        });
    }

    // ---- the dialog ----
    struct Dialog {
        int id = 0;  // the note; 0 for a new one
        Container object;
        std::shared_ptr<InputText> field;
        Listeners listeners;
        std::vector<std::shared_ptr<DisplayObject>> stops;
    };

    void edit(int id) {
        focusAfterDialog_ = focusedNote();
        page_->getOrCreateAccessibilityElement()->setHidden(true);
        drawDialog(id, board_.textOf(id));
        dialog_->field->setSelection({0, board_.textOf(id).size()});
    }

    void drawDialog(int id, const std::string& text) {
        if (dialog_) {
            display_->remove(dialog_->object);
        }
        dialog_ = Dialog{};
        dialog_->id = id;
        constexpr double kWidth = 440;
        constexpr double kHeight = 250;
        const auto size = display_->getScreenSize();
        const double left = (size.width - kWidth) / 2;
        const double top = (size.height - kHeight) / 2.5;
        const std::string name = id == 0 ? "New note" : "Edit note";
        dialog_->object = DisplayFactory::createContainer();
        auto& dialog = *dialog_->object;
        dialog.getOrCreateAccessibilityElement()->setRole(AccessibilityRole::Dialog);
        dialog.getAccessibilityElement()->setLabel(name);
        const auto shade = makePanel(0, 0, size.width, size.height, 0, 0x80000000);
        // The board is out of reach.
        dialog_->listeners.add<PointerEvent>(
            *shade, [](const PointerEvent& event) { return event.phase == PointerPhase::Down; });
        dialog.add(shade);
        dialog.add(makePanel(left, top, kWidth, kHeight, 16, palette_.card));
        dialog.add(makeText(name, left + 24, top + 40, 18, palette_.ink, true));
        dialog.add(makePanel(left + 24, top + 60, kWidth - 48, 116, 10, palette_.column));
        const auto field = DisplayFactory::createInputText(true, false, 400);
        field->setBounds({left + 34, top + 68, kWidth - 68, 100});
        field->setFont("DejaVu Sans");
        field->setTextSize(14 * scale_);
        field->setTextColor(palette_.ink);
        field->setContent(text);
        field->getOrCreateAccessibilityElement()->setLabel("Text of the note");
        dialog_->listeners.add<InputText::CommitEvent>(*field, [this](const auto&) { accept(); });
        dialog.add(field);
        dialog_->field = field;
        const double bottom = top + kHeight - 56;
        const auto cancel = makeButton("Cancel", left + kWidth - 232, bottom, 100, palette_, false,
                                       dialog_->listeners, [this] { closeDialog(); });
        const auto save = makeButton("Keep", left + kWidth - 124, bottom, 100, palette_, true,
                                     dialog_->listeners, [this] { accept(); });
        dialog.add(cancel);
        dialog.add(save);
        dialog_->stops = {field, cancel, save};
        display_->add(dialog_->object);
        display_->setFocus(field);
    }

    void accept() {
        if (const std::string text = dialog_->field->getContent(); !text.empty()) {
            const int id = dialog_->id;
            focusAfterDialog_ = id == 0 ? board_.add(text, kEnd) : board_.setText(id, text);
            isSaved_ = false;
        }
        closeDialog();
    }

    void closeDialog() {
        const std::optional<Dialog> closed = std::exchange(dialog_, {});
        display_->remove(closed->object);
        focused_ = focusAfterDialog_;
        draw();
    }

    // ---- saving ----
    void changed() {
        isSaved_ = false;
        draw();
    }

    // The window stays until the file is written on another thread.
    events::CloseDecision close() {
        if (isSaved_) {
            return events::CloseDecision::Close;
        }
        status_->setContent("Saving ...");
        orvane::thread::dispatch_background([this, text = board_.serialize()] {
            std::ofstream file(fileName());
            file << text << std::flush;
            orvane::thread::dispatch_main([this, isWritten = !file.fail()] {
                isSaved_ = isWritten;
                if (isWritten) {
                    display_->getWindow()->quit();
                } else {
                    status_->setContent("The notes cannot be written to " + fileName());
                }
            });
        });
        return events::CloseDecision::Hold;
    }

    std::shared_ptr<Display> display_ = Display::instance();
    Board board_{nlohmann::json::parse(kFirst)};
    bool isSaved_ = true;
    Container page_ = DisplayFactory::createContainer();
    Palette palette_{};
    float scale_ = 1;
    double width_ = 0;  // of a column
    std::shared_ptr<graphics::Text> status_;
    std::vector<std::shared_ptr<graphics::Rect>> columns_;
    std::vector<Card> cards_;
    std::vector<std::shared_ptr<DisplayObject>> stops_;  // of Tab
    std::optional<geometry::Point<double>> grip_;        // where the pointer holds a note
    std::optional<Dialog> dialog_;
    bool isDragging_ = false;
    int focusAfterDialog_ = 0;
    int focused_ = 0;  // the note that gets the focus when the board is drawn; 0: keeps it
    Listeners listeners_;
    Listeners lasting_;
    std::vector<std::shared_ptr<events::Shortcut>> shortcuts_;
};

}  // namespace notes

ORVANE_MAIN_CLASS(notes::Notes)
