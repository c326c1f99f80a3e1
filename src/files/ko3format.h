#pragma once

#include "common/bytes.h"

#include <array>
#include <optional>
#include <vector>

#include <QDate>
#include <QString>
#include <QStringView>

// The saved read-out: a data block of the five stamped telegrams, written as one text
// line of "&Hxx " groups.
namespace ko3 {

// Marker 0, count 5, the five lengths big-endian, the telegrams in order, and a surplus
// byte 0 at the end, which belongs to the file format.
Bytes BuildSaveBlock(const std::array<Bytes, 5>& telegrams);

// "&H" + two upper-case hex digits + blank for every byte; empty for a block of at most
// two bytes.
QString MakeHexLine(const Bytes& block);

// The bytes of one file line. Groups that cannot be read count as 0; a line of fewer than
// three characters holds no byte.
Bytes ParseHexLine(QStringView line);

struct SplitBlock {
    std::vector<Bytes> telegrams;
    bool oldForm = false;   // a single telegram without block header
    bool truncated = false; // the block ended inside a length or a telegram
};

// The telegrams of a loaded block, in file order. An old single-telegram file gives that
// one telegram. Copying stops at the first telegram that the block cannot hold whole.
SplitBlock SplitDeviceBlock(const Bytes& block);

// ShelLix_<serial>_<yyyymmdd>.ko3
QString AutoSaveFileName(double serialNumber, const QDate& date);

// What keeps a path from being read as a device file, found without opening it: a pipe
// would block the reader, a huge file would only waste its memory.
enum class FileProblem { None, Missing, Folder, NotRegular, TooLarge, Unreadable };
FileProblem CheckReadable(const QString& path);
// No device file comes near this size.
constexpr qint64 kMaxFileSize = qint64(16) << 20;

// The first line of a device file, or nothing when the file cannot be read (see
// CheckReadable) or its first line is longer than any device file's.
std::optional<QString> ReadFirstLine(const QString& path);
// The first line of a file's head as ReadFirstLine takes it: the line end and what follows
// a lone CR cut off; nothing when the line is longer than any device file's.
std::optional<QString> FirstLineOf(const QByteArray& head);
constexpr qint64 kMaxLineLength = 1 << 20;

// Writes the block as one line with CR LF, creating one missing folder level. On failure
// `reason` (when given) says why in the platform's words.
bool SaveData(const QString& path, const Bytes& block, QString* reason = nullptr);

} // namespace ko3
