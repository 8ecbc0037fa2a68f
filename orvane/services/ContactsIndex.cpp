#include "orvane/services/ContactsIndex.h"

#include <glib.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <sstream>
#include <string_view>
#include <tuple>
#include <utility>

namespace orvane::services {

namespace {

using Text = std::unique_ptr<char, decltype(&g_free)>;

// Letters of Latin alphabets with a stroke or in a ligature, which Unicode does not decompose, and
// what people type instead.
constexpr std::pair<std::string_view, std::string_view> kOtherLetters[] = {
    {"ł", "l"}, {"ø", "o"},  {"đ", "d"},  {"ð", "d"}, {"ħ", "h"},
    {"ı", "i"}, {"æ", "ae"}, {"œ", "oe"}, {"þ", "th"}};

std::string digitsOf(std::string_view text) {
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits),
                         [](char c) { return c >= '0' && c <= '9'; });
    return digits;
}

// Whether a text consists of what people write in telephone numbers.
bool isNumber(std::string_view text) {
    return text.find_first_of("0123456789") != std::string_view::npos &&
           text.find_first_not_of("0123456789 +-/.()") == std::string_view::npos;
}

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(std::move(word));
    }
    return words;
}

}  // namespace

std::string folded(const std::string& text) {
    const Text valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())), &g_free);
    const Text decomposed(g_utf8_normalize(valid.get(), -1, G_NORMALIZE_ALL), &g_free);
    std::string letters;
    for (const char* at = decomposed.get(); *at != '\0'; at = g_utf8_next_char(at)) {
        if (g_unichar_ismark(g_utf8_get_char(at)) == FALSE) {
            letters.append(at, static_cast<const char*>(g_utf8_next_char(at)));
        }
    }
    const Text sameCase(g_utf8_casefold(letters.c_str(), -1), &g_free);
    std::string result;
    for (const char* at = sameCase.get(); *at != '\0'; at = g_utf8_next_char(at)) {
        const char* const end = g_utf8_next_char(at);
        const std::string_view letter(at, static_cast<std::size_t>(end - at));
        const auto* const other =
            std::ranges::find(kOtherLetters, letter, [](const auto& entry) { return entry.first; });
        result += other != std::end(kOtherLetters) ? other->second : letter;
    }
    return result;
}

ContactsIndex::Entry ContactsIndex::prepare(Contact contact) {
    Entry entry;
    std::string shown = contact.name;
    std::string text = contact.name + "\n" + contact.organization;
    for (const Contact::Entry& mail : contact.mails) {
        text += "\n" + mail.value;
    }
    for (const Contact::Entry& number : contact.numbers) {
        entry.digits += digitsOf(number.value) + " ";
    }
    if (shown.empty()) {
        shown = contact.organization.empty() && !contact.mails.empty() ? contact.mails.front().value
                                                                       : contact.organization;
    }
    entry.order = folded(shown);
    entry.text = folded(text);
    entry.contact = std::move(contact);
    return entry;
}

ContactsIndex::Change ContactsIndex::store(Contact contact) {
    const auto found = entries_.find(contact.id);
    const bool isNew = found == entries_.end();
    if (!isNew && found->second.contact == contact) {
        return Change::None;
    }
    const std::string id = contact.id;
    entries_[id] = prepare(std::move(contact));
    sorted_.clear();
    return isNew ? Change::Added : Change::Changed;
}

bool ContactsIndex::remove(const std::string& id) {
    sorted_.clear();
    return entries_.erase(id) != 0;
}

const Contact* ContactsIndex::find(const std::string& id) const {
    const auto found = entries_.find(id);
    return found != entries_.end() ? &found->second.contact : nullptr;
}

ContactsPage ContactsIndex::find(const ContactsQuery& query) {
    if (sorted_.empty()) {
        sorted_.reserve(entries_.size());
        for (const auto& [id, entry] : entries_) {
            sorted_.push_back(&entry);
        }
        std::ranges::sort(sorted_, {}, [](const Entry* entry) {
            return std::tie(entry->order, entry->contact.name, entry->contact.id);
        });
    }
    const std::string digits = isNumber(query.text) ? digitsOf(query.text) : std::string();
    const std::vector<std::string> words = wordsOf(folded(query.text));
    const auto matches = [&](const Entry& entry) {
        return (!digits.empty() && entry.digits.find(digits) != std::string::npos) ||
               std::ranges::all_of(words, [&](const std::string& word) {
                   return entry.text.find(word) != std::string::npos;
               });
    };
    ContactsPage page{{}, query.offset, 0};
    for (const Entry* const entry : sorted_) {
        if (matches(*entry)) {
            if (page.total >= query.offset && page.contacts.size() < query.limit) {
                page.contacts.push_back(entry->contact);
            }
            ++page.total;
        }
    }
    return page;
}

}  // namespace orvane::services
