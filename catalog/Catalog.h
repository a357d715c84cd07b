// The font catalog: what scans learned of font files and their faces, kept
// in one SQLite database. It stores and answers; finding and reading the
// files is the tool's business.
//
// Several processes may use one catalog at once: it runs in WAL mode, every
// write is one transaction that waits for the others (busy timeout), and a
// process killed at any moment leaves the last committed state.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace SQLite {
class Database;
}

namespace tpcatalog {

// A catalog that cannot be used: not a database, another application's
// database, damaged, or made by a newer version.
class CatalogError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// What a file looked like when it was read. A file whose stamp is unchanged
// is not read again.
struct FileStamp {
    int64_t size = 0;
    int64_t mtimeNs = 0;
    int64_t device = 0;
    int64_t inode = 0;
    std::string forks;  // where its Mac forks lie, with their sizes and times
    bool operator==(const FileStamp&) const = default;
};

// One face, its attributes keyed by the library's kTP_Attr bits.
struct FaceRow {
    unsigned long index = 0;
    unsigned long mask = 0;  // the attributes stored
    std::map<unsigned long, std::string> texts;
    std::map<unsigned long, unsigned long> numbers;
    std::optional<std::string> legacyFoundry;
    std::string wrapper;    // what held the face in its file ("sfnt", "WOFF", ...)
    std::string container;  // the Mac container its bytes came through, "" for none
};

struct FileRow {
    std::string path;  // any bytes
    FileStamp stamp;
    int64_t identifiedNs = 0;  // when it was read (Unix time)
    int outcome = 0;           // the tool's outcome code
    std::string error;         // the line the tool reported, empty for none
    std::vector<FaceRow> faces;
};

// One condition of a search: a text attribute's value, or a checksum.
struct Criterion {
    unsigned long bit = 0;
    std::string text;
    std::optional<unsigned long> number;  // for checksums
};

struct CatalogStats {
    int64_t files = 0, faces = 0, filesWithoutFace = 0, errors = 0;
    int64_t lastIdentifiedNs = 0;
    std::vector<std::pair<std::string, int64_t>> kinds;  // faces per kind, most first
    int schemaVersion = 0;
};

class Catalog {
public:
    // What a catalog is opened for: a scan makes it when it is missing (its
    // folder must exist); a query needs it to exist.
    enum class Use { Scan, Query };

    // Opens the catalog at `path` for `use`; brings an older schema up to
    // date. Throws CatalogError.
    Catalog(const std::string& path, Use use);
    ~Catalog();
    Catalog(const Catalog&) = delete;
    Catalog& operator=(const Catalog&) = delete;

    // The stamps of the files at `root` or below it ("" for all), by path.
    std::unordered_map<std::string, FileStamp> stampsUnder(const std::string& root);

    // Stores (replacing) `files` and forgets `gone`, in one transaction.
    void write(const std::vector<FileRow>& files, const std::vector<std::string>& gone);

    // Files at `root` or below it ("" for all) with their faces, by path bytes.
    std::vector<FileRow> filesUnder(const std::string& root);

    // Visits the files with the faces that meet every criterion (only those
    // faces) by path bytes, each as soon as it is read. Only their paths and
    // faces are read (a file with a face was read without error): the rest
    // of each row is left as a new row has it.
    void find(const std::vector<Criterion>& criteria, bool ignoreCase,
              const std::function<void(FileRow&)>& visit);

    CatalogStats stats();

    static int CurrentSchemaVersion();

private:
    std::unique_ptr<SQLite::Database> db_;
};

// The database's columns of the face attributes, shared by the schema and
// the queries.
struct FaceColumn {
    unsigned long bit;
    const char* name;
    bool number;
};
const std::vector<FaceColumn>& FaceColumns();

// The schema's steps: step i brings user_version i to i + 1.
const std::vector<const char*>& MigrationSteps();

// PRAGMA application_id of a catalog ("TPct").
constexpr int32_t kApplicationId = 0x54506374;

}  // namespace tpcatalog
