#pragma once

#include <libebook/libebook.h>

#include <string>

#include "orvane/services/Contact.h"

namespace orvane::services {

// Reads a contact of an address book. The id is that of the contact in its book.
[[nodiscard]] Contact contactFrom(EContact* card);
// Stores in a card what a Contact contains, except the id and the photo. What else the card
// contains is kept.
void store(const Contact& contact, EContact* card);

// Returns the bytes of the photo's file; empty if there is none, or if it is on a server.
[[nodiscard]] std::string photoOf(EContact* card);
// Replaces the photo by the bytes of a PNG or JPEG file; removes it if they are empty.
void storePhoto(const std::string& bytes, EContact* card);

}  // namespace orvane::services
