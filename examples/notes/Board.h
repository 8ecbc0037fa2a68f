#pragma once

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace notes {

// The notes in three columns. A file keeps their texts as JSON.
class Board {
public:
    static constexpr std::array kColumns{"To do", "Doing", "Done"};

    struct Note {
        int id = 0;
        std::string text;

        friend void to_json(nlohmann::json& json, const Note& note) { json = note.text; }
    };
    struct Place {
        std::size_t column = 0;
        std::size_t row = 0;  // one behind the last means the end
    };

    const std::vector<Note>& column(std::size_t number) const { return columns_[number]; }
    std::optional<Place> find(int id) const {
        for (std::size_t column = 0; column < columns_.size(); ++column) {
            const auto found = std::ranges::find(columns_[column], id, &Note::id);
            if (found != columns_[column].end()) {
                return Place{column, static_cast<std::size_t>(found - columns_[column].begin())};
            }
        }
        return std::nullopt;
    }
    std::string textOf(int id) const {
        const auto place = find(id);
        return place ? columns_[place->column][place->row].text : "";
    }

    // Returns the id of the new note.
    int add(const std::string& text, const Place& place) { return put({++lastId_, text}, place); }
    int setText(int id, const std::string& text) {
        return put({id, text}, find(id).value_or(Place{}));
    }
    void move(int id, const Place& place) { put({id, textOf(id)}, place); }
    void remove(int id) {
        for (auto& column : columns_) {
            std::erase_if(column, [id](const Note& note) { return note.id == id; });
        }
    }

    // Throws if it is not a board.
    explicit Board(const nlohmann::json& json) {
        const auto texts = json.get<std::array<std::vector<std::string>, kColumns.size()>>();
        for (std::size_t column = 0; column < texts.size(); ++column) {
            for (const std::string& each : texts[column]) {
                add(each, {column, columns_[column].size()});
            }
        }
    }
    std::string serialize() const { return nlohmann::json(columns_).dump(1); }

private:
    int put(const Note& note, const Place& place) {
        remove(note.id);
        auto& column = columns_[place.column];
        column.insert(
            column.begin() + static_cast<std::ptrdiff_t>(std::min(place.row, column.size())), note);
        return note.id;
    }

    std::array<std::vector<Note>, kColumns.size()> columns_;
    int lastId_ = 0;
};

}  // namespace notes
