#pragma once

#include <charconv>

#include <QLatin1StringView>
#include <QString>
#include <QStringBuilder>

// Pieces of the getters' descriptions. The display reads thousands of values a refresh and
// never their descriptions, so a getter keeps its description as pieces (Description) and
// the text is joined, in one allocation, only when the data logger asks for it.
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

// Whose value it is: "Detektor 1: ", "NTC Fühler 1: ", "Löscheinschub 1: ", "Relais 1 ".
enum class Scope : std::uint8_t { None, Detector, Sensor, Module, Relay };

// scope, then "Bit 5: " (the relay masks count with two digits, "Bit 05: "), then the
// getter's own words, then a trailing number ("Zustand Relais 3").
struct Description {
    Description(const QString& words = QString())
        : text(words) {}

    QString text;
    Scope scope = Scope::None;
    int scopeNumber = 0;
    int bit = -1;
    int bitDigits = 1;
    int trailingNumber = -1;

    QString joined() const;
};

inline Description within(Scope scope, int index, Description description) {
    description.scope = scope;
    description.scopeNumber = index + 1;
    return description;
}

inline Description detector(int d, Description description) {
    return within(Scope::Detector, d, std::move(description));
}

inline Description sensor(int n, Description description) {
    return within(Scope::Sensor, n, std::move(description));
}

inline Description busModule(int m, Description description) {
    return within(Scope::Module, m, std::move(description));
}

inline Description relay(int r, Description description) {
    return within(Scope::Relay, r, std::move(description));
}

inline Description bit(int b, int minDigits, const QString& text) {
    Description description(text);
    description.bit = b;
    description.bitDigits = minDigits;
    return description;
}

inline Description numbered(const QString& text, int number) {
    Description description(text);
    description.trailingNumber = number;
    return description;
}

} // namespace valuetext
