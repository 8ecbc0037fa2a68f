#include "platform/gtk/map/MBTilesFile.h"

#include <sqlite3.h>

#include <utility>

#include "platform/map/tilePictures.h"

namespace orvane::platform {

namespace {

// A query may take so many steps of SQLite's machine; a tile takes some dozens. A view can be
// written so that it never ends.
constexpr int kMostSteps = 1'000'000;

}  // namespace

MBTilesFile::MBTilesFile(std::string path)
    : path_(std::move(path)),
      database_(nullptr, sqlite3_close),
      query_(nullptr, sqlite3_finalize) {}

void MBTilesFile::fail() {
    failure_ = sqlite3_errmsg(database_.get());
    query_.reset();
}

bool MBTilesFile::open() {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(path_.c_str(), &opened,
                                       SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    database_.reset(opened);
    if (result != SQLITE_OK) {
        fail();
        return false;
    }
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_limit(opened, SQLITE_LIMIT_LENGTH, static_cast<int>(kMostTileBytes));
    sqlite3_progress_handler(
        opened, kMostSteps, [](void*) { return 1; }, nullptr);
    sqlite3_stmt* query = nullptr;
    if (sqlite3_prepare_v2(opened,
                           "SELECT tile_data FROM tiles "
                           "WHERE zoom_level = ? AND tile_column = ? AND tile_row = ?",
                           -1, &query, nullptr) != SQLITE_OK) {
        fail();
        return false;
    }
    query_.reset(query);
    return true;
}

MBTilesFile::Tile MBTilesFile::read(const NSMapTile& tile) {
    const std::lock_guard lock(mutex_);
    if (!failure_.empty() || (!query_ && !open())) {
        return {{}, failure_};
    }
    sqlite3_stmt* const query = query_.get();
    sqlite3_bind_int(query, 1, tile.zoom);
    sqlite3_bind_int(query, 2, tile.x);
    // Rows count from the south.
    sqlite3_bind_int(query, 3, (1 << tile.zoom) - 1 - tile.y);
    Tile result;
    const int step = sqlite3_step(query);
    if (step == SQLITE_ROW) {
        const auto* const bytes = static_cast<const unsigned char*>(sqlite3_column_blob(query, 0));
        const int size = sqlite3_column_bytes(query, 0);
        result.bytes.assign(bytes, bytes + size);
    } else if (step != SQLITE_DONE) {
        fail();
        result.failure = failure_;
        return result;
    }
    sqlite3_reset(query);
    return result;
}

}  // namespace orvane::platform
