#include "Catalog.h"

#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <string_view>
#include <thread>
#include <tuple>

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <typeprobe/typeprobe.h>

namespace tpcatalog {

namespace {

// A second writer waits this long for the first before giving up.
constexpr int kBusyTimeoutMs = 60000;

std::string FaceColumnList()
{
    std::string list = "face_index, mask, legacy_foundry, wrapper, container";
    for (const FaceColumn& column : FaceColumns()) list += std::string(", ") + column.name;
    return list;
}

// Paths are bound as BLOBs: a TEXT value never equals a BLOB in SQLite.
void BindPath(SQLite::Statement& statement, int index, const std::string& path)
{
    statement.bind(index, path.data(), int(path.size()));
}

// The byte range of the paths below `root`: [root + "/", root + "0").
std::pair<std::string, std::string> RangeBelow(const std::string& root)
{
    std::string low = root.empty() || root.back() != '/' ? root + "/" : root;
    std::string high = low;
    high.back() = char('/' + 1);
    return {low, high};
}

// "" for all files, else the file `root` and those below it.
const char* const kUnder = "(length(?1) = 0 OR files.path = ?1 OR (files.path >= ?2 AND files.path < ?3))";

void BindUnder(SQLite::Statement& statement, const std::string& root)
{
    const auto [low, high] = RangeBelow(root);
    BindPath(statement, 1, root);
    BindPath(statement, 2, low);
    BindPath(statement, 3, high);
}

FaceRow ReadFace(SQLite::Statement& row, int first)
{
    FaceRow face;
    face.index = static_cast<unsigned long>(row.getColumn(first).getInt64());
    const auto stored = static_cast<unsigned long>(row.getColumn(first + 1).getInt64());
    if (!row.getColumn(first + 2).isNull()) face.legacyFoundry = row.getColumn(first + 2).getString();
    face.wrapper = row.getColumn(first + 3).getString();
    face.container = row.getColumn(first + 4).getString();
    int at = first + 5;
    for (const FaceColumn& column : FaceColumns()) {
        const SQLite::Column value = row.getColumn(at++);
        if (!(stored & column.bit) || value.isNull()) continue;
        face.mask |= column.bit;
        if (column.number)
            face.numbers[column.bit] = static_cast<unsigned long>(value.getInt64());
        else
            face.texts[column.bit] = value.getString();
    }
    return face;
}

const char* const kFileColumns =
    "files.id, files.path, size, mtime_ns, device, inode, forks, identified_ns, outcome, error";
constexpr int kFileColumnCount = 10;

FileRow ReadFile(SQLite::Statement& row)
{
    FileRow file;
    file.path = row.getColumn(1).getString();
    file.stamp = {row.getColumn(2).getInt64(), row.getColumn(3).getInt64(),
                  row.getColumn(4).getInt64(), row.getColumn(5).getInt64(),
                  row.getColumn(6).getString()};
    file.identifiedNs = row.getColumn(7).getInt64();
    file.outcome = row.getColumn(8).getInt();
    file.error = row.getColumn(9).getString();
    return file;
}

// Rows of files joined with their faces (or NULLs), one file per run of
// rows with the same id.
std::vector<FileRow> CollectFiles(SQLite::Statement& query)
{
    std::vector<FileRow> files;
    int64_t current = -1;
    while (query.executeStep()) {
        const int64_t id = query.getColumn(0).getInt64();
        if (id != current) {
            files.push_back(ReadFile(query));
            current = id;
        }
        if (!query.getColumn(kFileColumnCount).isNull())
            files.back().faces.push_back(ReadFace(query, kFileColumnCount));
    }
    return files;
}

// The application id, the number of schema objects and the schema version.
std::tuple<int, int, int> Identity(SQLite::Database& db)
{
    SQLite::Statement query(db,
        "SELECT (SELECT application_id FROM pragma_application_id),"
        " (SELECT count(*) FROM sqlite_master), (SELECT user_version FROM pragma_user_version)");
    query.executeStep();
    return {query.getColumn(0).getInt(), query.getColumn(1).getInt(), query.getColumn(2).getInt()};
}

constexpr int kQueryCachePages = 32;

// Two processes making the same catalog may each hold the lock the other
// needs to leave the rollback journal; SQLite then answers "busy" at once
// instead of waiting, and the one refused tries again.
void SetWriteAheadLog(SQLite::Database& db)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(kBusyTimeoutMs);
    for (;;) {
        try {
            db.exec("PRAGMA journal_mode = WAL");
            return;
        } catch (const SQLite::Exception& error) {
            if ((error.getErrorCode() & 0xFF) != SQLITE_BUSY || std::chrono::steady_clock::now() > deadline)
                throw;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

}  // namespace

Catalog::Catalog(const std::string& path, Use use)
{
    const bool create = use == Use::Scan;
    if (!create && ::access(path.c_str(), F_OK) != 0)
        throw CatalogError(path + ": " + std::strerror(errno));
    try {
        // A query runs on one thread: its connection need not lock at each call.
        const int flags = SQLite::OPEN_READWRITE | (create ? SQLite::OPEN_CREATE : SQLite::OPEN_NOMUTEX);
        db_ = std::make_unique<SQLite::Database>(path, flags, kBusyTimeoutMs);
        // The first read tells a database from random bytes. One statement
        // reads one snapshot, so a catalog that another process is making is
        // seen either empty or whole.
        const auto [applicationId, tables, version] = Identity(*db_);
        if (applicationId != kApplicationId && (applicationId != 0 || tables != 0))
            throw CatalogError(path + ": not a typeprobe catalog (a database of another application)");
        if (version > CurrentSchemaVersion())
            throw CatalogError(path + ": a catalog of a newer typeprobe (schema " +
                               std::to_string(version) + ")");
        // The journal mode is kept in the file: a query of a catalog that a
        // scan made need not set it.
        if (create || version < CurrentSchemaVersion()) SetWriteAheadLog(*db_);
        // With WAL, NORMAL loses nothing committed when a process dies.
        db_->exec("PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON");
        // A query touches each page once or twice, and every page the cache
        // allocates is fresh memory to fault in: a small cache that keeps the
        // trees' upper pages answers faster than a large one.
        if (use == Use::Query) db_->exec("PRAGMA cache_size = " + std::to_string(kQueryCachePages));
        if (version < CurrentSchemaVersion()) {
            // Another process may be making or upgrading it too: decide again
            // inside the write lock.
            db_->exec("BEGIN IMMEDIATE");
            const auto [lockedId, lockedTables, lockedVersion] = Identity(*db_);
            if (lockedId != kApplicationId && (lockedId != 0 || lockedTables != 0)) {
                db_->exec("ROLLBACK");
                throw CatalogError(path + ": not a typeprobe catalog (a database of another application)");
            }
            int at = lockedVersion;
            for (; at < CurrentSchemaVersion(); ++at) db_->exec(MigrationSteps()[size_t(at)]);
            db_->exec("PRAGMA application_id = " + std::to_string(kApplicationId) +
                      "; PRAGMA user_version = " + std::to_string(at) + "; COMMIT");
        }
    } catch (const SQLite::Exception& error) {
        throw CatalogError(path + ": not a usable typeprobe catalog (" + error.what() + ")");
    }
}

Catalog::~Catalog() = default;

std::unordered_map<std::string, FileStamp> Catalog::stampsUnder(const std::string& root)
{
    SQLite::Statement query(*db_, std::string("SELECT ") + kFileColumns + " FROM files WHERE " + kUnder);
    BindUnder(query, root);
    std::unordered_map<std::string, FileStamp> stamps;
    while (query.executeStep()) {
        FileRow file = ReadFile(query);
        stamps.emplace(std::move(file.path), std::move(file.stamp));
    }
    return stamps;
}

void Catalog::write(const std::vector<FileRow>& files, const std::vector<std::string>& gone)
{
    if (files.empty() && gone.empty()) return;
    db_->exec("BEGIN IMMEDIATE");
    try {
        SQLite::Statement remove(*db_, "DELETE FROM files WHERE path = ?");
        for (const std::string& path : gone) {
            BindPath(remove, 1, path);
            remove.exec();
            remove.reset();
        }
        SQLite::Statement upsert(*db_,
            "INSERT INTO files(path, size, mtime_ns, device, inode, forks, identified_ns, outcome, error)"
            " VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT(path) DO UPDATE SET size = excluded.size,"
            " mtime_ns = excluded.mtime_ns, device = excluded.device, inode = excluded.inode,"
            " forks = excluded.forks, identified_ns = excluded.identified_ns,"
            " outcome = excluded.outcome, error = excluded.error RETURNING id");
        SQLite::Statement clear(*db_, "DELETE FROM faces WHERE file_id = ?");
        std::string insertText = "INSERT INTO faces(file_id, path, " + FaceColumnList() + ") VALUES(?, ?";
        for (size_t i = 0; i < FaceColumns().size() + 5; ++i) insertText += ", ?";
        SQLite::Statement insert(*db_, insertText + ")");
        for (const FileRow& file : files) {
            BindPath(upsert, 1, file.path);
            upsert.bind(2, file.stamp.size);
            upsert.bind(3, file.stamp.mtimeNs);
            upsert.bind(4, file.stamp.device);
            upsert.bind(5, file.stamp.inode);
            upsert.bind(6, file.stamp.forks.data(), int(file.stamp.forks.size()));
            upsert.bind(7, file.identifiedNs);
            upsert.bind(8, file.outcome);
            if (file.error.empty()) upsert.bind(9); else upsert.bind(9, file.error);
            upsert.executeStep();
            const int64_t id = upsert.getColumn(0).getInt64();
            upsert.reset();
            clear.bind(1, id);
            clear.exec();
            clear.reset();
            for (const FaceRow& face : file.faces) {
                insert.bind(1, id);
                BindPath(insert, 2, file.path);
                insert.bind(3, int64_t(face.index));
                insert.bind(4, int64_t(face.mask));
                if (face.legacyFoundry) insert.bind(5, *face.legacyFoundry); else insert.bind(5);
                insert.bind(6, face.wrapper);
                insert.bind(7, face.container);
                int at = 8;
                for (const FaceColumn& column : FaceColumns()) {
                    if (column.number) {
                        auto value = face.numbers.find(column.bit);
                        if (value == face.numbers.end()) insert.bind(at); else insert.bind(at, int64_t(value->second));
                    } else {
                        auto value = face.texts.find(column.bit);
                        if (value == face.texts.end()) insert.bind(at); else insert.bind(at, value->second);
                    }
                    ++at;
                }
                insert.exec();
                insert.reset();
            }
        }
        db_->exec("COMMIT");
    } catch (...) {
        db_->tryExec("ROLLBACK");
        throw;
    }
}

std::vector<FileRow> Catalog::filesUnder(const std::string& root)
{
    // `path`, the one column both tables have, is named by table in the
    // file columns; the face columns need no table.
    SQLite::Statement query(*db_, std::string("SELECT ") + kFileColumns + ", " + FaceColumnList() +
        " FROM files LEFT JOIN faces ON faces.file_id = files.id WHERE " + kUnder +
        " ORDER BY files.path, faces.face_index");
    BindUnder(query, root);
    return CollectFiles(query);
}

void Catalog::find(const std::vector<Criterion>& criteria, bool ignoreCase,
                   const std::function<void(FileRow&)>& visit)
{
    std::string where;
    for (const Criterion& criterion : criteria) {
        const char* name = "";
        for (const FaceColumn& column : FaceColumns())
            if (column.bit == criterion.bit) name = column.name;
        where += where.empty() ? " WHERE " : " AND ";
        // The NOCASE index narrows an exact look-up too.
        if (criterion.number)
            where += std::string("faces.") + name + " = ?";
        else if (ignoreCase)
            where += std::string("faces.") + name + " = ? COLLATE NOCASE";
        else
            where += std::string("(faces.") + name + " = ? COLLATE NOCASE AND faces." + name + " = ?)";
    }
    // Every column is in the PostScript name's index: a search by name reads
    // that index alone.
    SQLite::Statement query(*db_, "SELECT path, " + FaceColumnList() + " FROM faces" + where +
        " ORDER BY path, face_index");
    int at = 1;
    for (const Criterion& criterion : criteria) {
        if (criterion.number) {
            query.bind(at++, int64_t(*criterion.number));
        } else {
            query.bind(at++, criterion.text);
            if (!ignoreCase) query.bind(at++, criterion.text);
        }
    }
    // One file per run of rows with the same path. Visiting each at once
    // keeps a large answer out of memory.
    FileRow file;
    while (query.executeStep()) {
        const SQLite::Column path = query.getColumn(0);
        const std::string_view bytes(static_cast<const char*>(path.getBlob()), size_t(path.getBytes()));
        if (!file.faces.empty() && file.path != bytes) {
            visit(file);
            file.faces.clear();
        }
        if (file.faces.empty()) file.path = bytes;
        file.faces.push_back(ReadFace(query, 1));
    }
    if (!file.faces.empty()) visit(file);
}

CatalogStats Catalog::stats()
{
    CatalogStats stats;
    SQLite::Statement files(*db_,
        "SELECT count(*), coalesce(sum(error IS NOT NULL), 0), coalesce(max(identified_ns), 0),"
        " coalesce(sum(NOT EXISTS(SELECT 1 FROM faces WHERE file_id = files.id)), 0) FROM files");
    files.executeStep();
    stats.files = files.getColumn(0).getInt64();
    stats.errors = files.getColumn(1).getInt64();
    stats.lastIdentifiedNs = files.getColumn(2).getInt64();
    stats.filesWithoutFace = files.getColumn(3).getInt64();
    SQLite::Statement kinds(*db_,
        "SELECT coalesce(kind, ''), count(*) FROM faces GROUP BY 1 ORDER BY 2 DESC, 1");
    while (kinds.executeStep()) {
        stats.kinds.emplace_back(kinds.getColumn(0).getString(), kinds.getColumn(1).getInt64());
        stats.faces += kinds.getColumn(1).getInt64();
    }
    stats.schemaVersion = db_->execAndGet("PRAGMA user_version").getInt();
    return stats;
}

}  // namespace tpcatalog
