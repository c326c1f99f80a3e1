#pragma once

#include <charconv>

#include <QLatin1StringView>
#include <QString>
#include <QStringBuilder>

// Pieces of the getters' descriptions. Built with QStringBuilder, so that a description
// costs one allocation: the data logger asks for every one of them on each pass.
namespace valuetext {

using namespace Qt::StringLiterals;

// A small non-negative number as text, zero-padded to `minDigits`, without allocating.
class Number {
public:
    explicit Number(int value, int minDigits = 1) {
        char digits[12];
        const auto result = std::to_chars(digits, digits + sizeof digits, value);
        const int count = static_cast<int>(result.ptr - digits);
        while (size_ < minDigits - count && size_ < kCapacity)
            text_[size_++] = '0';
        for (int i = 0; i < count && size_ < kCapacity; ++i)
            text_[size_++] = digits[i];
    }
    QLatin1StringView view() const { return QLatin1StringView(text_, size_); }

private:
    static constexpr int kCapacity = 16;
    char text_[kCapacity] = {};
    int size_ = 0;
};

inline QString detector(int d, const QString& text) {
    return u"Detektor "_s % Number(d + 1).view() % u": "_s % text;
}

inline QString sensor(int n, const QString& text) {
    return u"NTC Fühler "_s % Number(n + 1).view() % u": "_s % text;
}

inline QString busModule(int m, const QString& text) {
    return u"Löscheinschub "_s % Number(m + 1).view() % u": "_s % text;
}

// "Bit 5: text"; the relay masks count their bits with two digits, "Bit 05: text".
inline QString bit(int b, int minDigits, const QString& text) {
    return u"Bit "_s % Number(b, minDigits).view() % u": "_s % text;
}

} // namespace valuetext
