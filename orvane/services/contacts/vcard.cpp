#include "orvane/services/contacts/vcard.h"

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane::services {

namespace {

// Each label of a Contact::Entry, and the type of vCard (RFC 2426) as which it is stored.
constexpr std::pair<const char*, const char*> kTypes[] = {
    {"fax", "FAX"}, {"cell", "CELL"}, {"home", "HOME"}, {"work", "WORK"}};

std::string textOf(EContact* card, EContactField field) {
    const auto* const text = static_cast<const char*>(e_contact_get_const(card, field));
    return text != nullptr ? text : "";
}

void setText(EContact* card, EContactField field, const std::string& text) {
    if (textOf(card, field) != text) {
        e_contact_set(card, field, text.empty() ? nullptr : text.c_str());
    }
}

Contact::Entry entryFrom(EVCardAttribute* attribute) {
    Contact::Entry entry;
    for (const auto& [label, type] : kTypes) {
        if (e_vcard_attribute_has_type(attribute, type) != FALSE) {
            entry.label = label;
            break;
        }
    }
    const GList* const values = e_vcard_attribute_get_values(attribute);
    if (values != nullptr && values->data != nullptr) {
        entry.value = static_cast<const char*>(values->data);
    }
    return entry;
}

GList* attributesOf(EContact* card, EContactField field) {
    return e_contact_get_attributes(card, field);
}

void freeAttributes(GList* attributes) {
    g_list_free_full(attributes, [](void* data) {
        e_vcard_attribute_free(static_cast<EVCardAttribute*>(data));
    });
}

std::vector<Contact::Entry> entriesOf(EContact* card, EContactField field) {
    std::vector<Contact::Entry> entries;
    GList* const attributes = attributesOf(card, field);
    for (const GList* link = attributes; link != nullptr; link = link->next) {
        entries.push_back(entryFrom(static_cast<EVCardAttribute*>(link->data)));
    }
    freeAttributes(attributes);
    return entries;
}

// An attribute that says the same already is kept with all that it says.
EVCardAttribute* attributeFor(const Contact::Entry& entry, const char* name, GList* before) {
    for (const GList* link = before; link != nullptr; link = link->next) {
        auto* const attribute = static_cast<EVCardAttribute*>(link->data);
        if (entryFrom(attribute) == entry) {
            return e_vcard_attribute_copy(attribute);
        }
    }
    EVCardAttribute* const attribute = e_vcard_attribute_new(nullptr, name);
    e_vcard_attribute_add_value(attribute, entry.value.c_str());
    const char* type = "OTHER";
    for (const auto& [label, word] : kTypes) {
        if (entry.label == label) {
            type = word;
        }
    }
    e_vcard_attribute_add_param_with_value(attribute, e_vcard_attribute_param_new(EVC_TYPE), type);
    return attribute;
}

void setEntries(EContact* card, EContactField field, const char* name,
                const std::vector<Contact::Entry>& entries) {
    if (entriesOf(card, field) == entries) {
        return;
    }
    GList* const before = attributesOf(card, field);
    GList* attributes = nullptr;
    for (const Contact::Entry& entry : entries) {
        attributes = g_list_append(attributes, attributeFor(entry, name, before));
    }
    e_contact_set_attributes(card, field, attributes);
    freeAttributes(attributes);
    freeAttributes(before);
}

using Photo = std::unique_ptr<EContactPhoto, decltype(&e_contact_photo_free)>;

}  // namespace

Contact contactFrom(EContact* card) {
    Contact contact;
    contact.id = textOf(card, E_CONTACT_UID);
    contact.name = textOf(card, E_CONTACT_FULL_NAME);
    contact.givenName = textOf(card, E_CONTACT_GIVEN_NAME);
    contact.familyName = textOf(card, E_CONTACT_FAMILY_NAME);
    contact.organization = textOf(card, E_CONTACT_ORG);
    contact.numbers = entriesOf(card, E_CONTACT_TEL);
    contact.mails = entriesOf(card, E_CONTACT_EMAIL);
    contact.note = textOf(card, E_CONTACT_NOTE);
    contact.hasPhoto = e_vcard_get_attribute(E_VCARD(card), EVC_PHOTO) != nullptr;
    return contact;
}

void store(const Contact& contact, EContact* card) {
    const bool hasParts = !contact.givenName.empty() || !contact.familyName.empty();
    const bool hasBoth = !contact.givenName.empty() && !contact.familyName.empty();
    const std::string parts = contact.givenName + (hasBoth ? " " : "") + contact.familyName;
    // First: the card takes the whole name apart, which only the parts themselves replace.
    setText(card, E_CONTACT_FULL_NAME, contact.name.empty() ? parts : contact.name);
    if (hasParts) {
        setText(card, E_CONTACT_GIVEN_NAME, contact.givenName);
        setText(card, E_CONTACT_FAMILY_NAME, contact.familyName);
    }
    setText(card, E_CONTACT_ORG, contact.organization);
    setText(card, E_CONTACT_NOTE, contact.note);
    setEntries(card, E_CONTACT_TEL, EVC_TEL, contact.numbers);
    setEntries(card, E_CONTACT_EMAIL, EVC_EMAIL, contact.mails);
}

std::string photoOf(EContact* card) {
    // A photo that the address book keeps in a file.
    e_contact_inline_local_photos(card, nullptr);
    const Photo photo(static_cast<EContactPhoto*>(e_contact_get(card, E_CONTACT_PHOTO)),
                      &e_contact_photo_free);
    gsize length = 0;
    const guchar* const bytes = photo && photo->type == E_CONTACT_PHOTO_TYPE_INLINED
                                    ? e_contact_photo_get_inlined(photo.get(), &length)
                                    : nullptr;
    return bytes != nullptr ? std::string(bytes, bytes + length) : std::string();
}

void storePhoto(const std::string& bytes, EContact* card) {
    if (bytes.empty()) {
        e_contact_set(card, E_CONTACT_PHOTO, nullptr);
        return;
    }
    const Photo photo(e_contact_photo_new(), &e_contact_photo_free);
    photo->type = E_CONTACT_PHOTO_TYPE_INLINED;
    e_contact_photo_set_inlined(photo.get(), reinterpret_cast<const guchar*>(bytes.data()),
                                bytes.size());
    e_contact_photo_set_mime_type(photo.get(),
                                  bytes.starts_with("\x89PNG") ? "image/png" : "image/jpeg");
    e_contact_set(card, E_CONTACT_PHOTO, photo.get());
}

}  // namespace orvane::services
