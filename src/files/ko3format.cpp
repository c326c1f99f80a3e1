#include "files/ko3format.h"

#include "common/savefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include <sys/stat.h>
#include <unistd.h>

namespace ko3 {
namespace {

// Far above the longest block a device file holds (about 5 KiB of text); a longer first
// line is no device file.

int hexDigit(QChar c) {
    const char16_t u = c.unicode();
    if (u >= '0' && u <= '9') return u - '0';
    if (u >= 'A' && u <= 'F') return u - 'A' + 10;
    if (u >= 'a' && u <= 'f') return u - 'a' + 10;
    return -1;
}

// "&Hxx" read as a hexadecimal number; leading digits count, anything else is 0.
std::uint8_t groupValue(QStringView group) {
    if (group.size() < 3 || group[0] != u'&' || (group[1] != u'H' && group[1] != u'h')) return 0;
    int value = 0;
    for (qsizetype i = 2; i < group.size(); ++i) {
        const int digit = hexDigit(group[i]);
        if (digit < 0) break;
        value = value * 16 + digit;
    }
    return static_cast<std::uint8_t>(value);
}

std::size_t readLength(const Bytes& block, std::size_t at) {
    return static_cast<std::size_t>(block[at]) * 256 + block[at + 1];
}

} // namespace

Bytes BuildSaveBlock(const std::array<Bytes, 5>& telegrams) {
    Bytes block{0, static_cast<std::uint8_t>(telegrams.size())};
    for (const Bytes& t : telegrams) {
        block.push_back(static_cast<std::uint8_t>(t.size() / 256));
        block.push_back(static_cast<std::uint8_t>(t.size() % 256));
    }
    for (const Bytes& t : telegrams)
        block.insert(block.end(), t.begin(), t.end());
    block.push_back(0);
    return block;
}

QString MakeHexLine(const Bytes& block) {
    if (block.size() <= 2) return {};
    static const char digits[] = "0123456789ABCDEF";
    QString line;
    line.reserve(static_cast<qsizetype>(block.size()) * 5);
    for (std::uint8_t b : block) {
        line += QLatin1String("&H");
        line += QLatin1Char(digits[b >> 4]);
        line += QLatin1Char(digits[b & 0x0F]);
        line += QLatin1Char(' ');
    }
    return line;
}

Bytes ParseHexLine(QStringView line) {
    // Rounding line length / 5 - 1 to the nearest whole number also counts a last group
    // that lacks its blank.
    const qsizetype groups = (line.size() + 2) / 5;
    Bytes out(static_cast<std::size_t>(groups));
    for (qsizetype i = 0; i < groups; ++i)
        out[static_cast<std::size_t>(i)] = groupValue(line.mid(5 * i, 4));
    return out;
}

SplitBlock SplitDeviceBlock(const Bytes& block) {
    SplitBlock result;
    if (block.size() < 2) return result;
    if (block[1] == 0 || block[0] != 0) {
        result.oldForm = true;
        result.telegrams.push_back(block);
        return result;
    }
    const std::size_t count = block[1];
    std::size_t pos = 2 * count + 2;
    for (std::size_t k = 1; k <= count; ++k) {
        if (2 * k + 1 >= block.size()) {
            result.truncated = true;
            break;
        }
        const std::size_t length = readLength(block, 2 * k);
        if (pos + length > block.size()) {
            result.truncated = true;
            break;
        }
        result.telegrams.emplace_back(block.begin() + static_cast<std::ptrdiff_t>(pos),
                                      block.begin() + static_cast<std::ptrdiff_t>(pos + length));
        pos += length;
    }
    return result;
}

QString AutoSaveFileName(double serialNumber, const QDate& date) {
    return QStringLiteral("ShelLix_%1_%2.ko3")
        .arg(QString::number(serialNumber, 'f', 0), date.toString(QStringLiteral("yyyyMMdd")));
}

FileProblem CheckReadable(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    struct stat info {};
    if (name.isEmpty() || ::stat(name.constData(), &info) != 0) return FileProblem::Missing;
    if (S_ISDIR(info.st_mode)) return FileProblem::Folder;
    if (!S_ISREG(info.st_mode)) return FileProblem::NotRegular;
    if (info.st_size > kMaxFileSize) return FileProblem::TooLarge;
    if (::access(name.constData(), R_OK) != 0) return FileProblem::Unreadable;
    return FileProblem::None;
}

std::optional<QString> ReadFirstLine(const QString& path) {
    if (CheckReadable(path) != FileProblem::None) return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    // readLine() with a limit takes the whole limit, a megabyte, for every file it reads;
    // a read-out is a few kilobytes, and the first line is cut from what was read.
    return FirstLineOf(file.read(std::min(file.size(), kMaxLineLength + 1)));
}

std::optional<QString> FirstLineOf(const QByteArray& head) {
    const qsizetype end = head.indexOf('\n');
    QByteArray line = end < 0 ? head : head.left(end + 1);
    if (line.size() > kMaxLineLength) return std::nullopt;
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    const qsizetype cr = line.indexOf('\r');
    if (cr >= 0) line.truncate(cr);
    return QString::fromLatin1(line);
}

bool SaveData(const QString& path, const Bytes& block, QString* reason) {
    const QFileInfo info(path);
    const QDir folder = info.absoluteDir();
    QString why;
    if (!folder.exists() && !QDir().mkdir(folder.absolutePath()))
        why = QStringLiteral("cannot create the folder %1")
                  .arg(QDir::toNativeSeparators(folder.absolutePath()));
    else
        why = writeWholeFile(path, MakeHexLine(block).toLatin1() + "\r\n");
    if (reason) *reason = why;
    return why.isEmpty();
}

} // namespace ko3
