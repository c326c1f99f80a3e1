#pragma once

#include <QString>

#include <cstdint>
#include <span>
#include <string>

// Every window declares its elements once, in a table of name, kind and index range (see
// the headers frm*elements.h). The table gives the code a constant per element, so that a
// misspelt name does not compile, and the window model a list of the names it holds, so
// that a name it lacks is refused at run time.

enum class ElementKind : std::uint8_t {
    Menu,     // menu or menu entry
    Label,    // text shown, not edited
    Text,     // text field
    Check,    // tick box
    Option,   // option element of a group
    Combo,    // combo box
    List,     // list of entries
    UpDown,   // up/down element with minimum, maximum and step
    Button,   // command button
    Frame,    // frame with a title
    Tab,      // tab widget or one of its pages
    Box,      // box with a back colour and a drawn dot: LEDs and fault boxes
    Gauge,    // pointer gauge with minimum, centre, maximum and three end labels
    BarGraph, // bar graph
    Relay,    // two-state relay element
    Line,     // line placed by its top
    Image,    // picture
    Tray,     // the notification-area icon
};

// One row of a window's table: a single element, or a control array whose members carry
// their index behind an underscore, "lblSerialNo_0", for indexes first to last. An array of
// tab pages also names the tab widget itself.
struct ElementDecl {
    const char16_t* name;
    ElementKind kind;
    int first = -1;
    int last = -1;

    constexpr bool isArray() const { return first >= 0; }
};

using FormDeclaration = std::span<const ElementDecl>;

// A declared single element; stands wherever an element's name is wanted.
class ElementName {
public:
    constexpr explicit ElementName(const char16_t* name)
        : m_name(name)
        , m_length(static_cast<qsizetype>(std::char_traits<char16_t>::length(name))) {}
    QString name() const;
    operator QString() const { return name(); }
    // Where the name's characters lie: the same for the whole program's life.
    const char16_t* characters() const { return m_name; }

private:
    const char16_t* m_name;
    qsizetype m_length;
};

// A declared control array: `lblSerialNo[3]` is the name "lblSerialNo_3". Which indexes
// exist is the window's to say; first() and last() span the first row of the array.
class ElementArray {
public:
    constexpr ElementArray(const char16_t* base, int first, int last)
        : m_base(base)
        , m_first(first)
        , m_last(last) {}
    QString operator[](int index) const;
    // The whole array under its own name: a tab widget, whose value is the page shown.
    QString whole() const { return m_base.name(); }
    int first() const { return m_first; }
    int last() const { return m_last; }

private:
    ElementName m_base;
    int m_first;
    int m_last;
};

// The name of member `index` of a control array: base, underscore, index.
QString indexedName(QStringView base, int index);

// What a name that no window declares means. Tests (MQ27_STRICT_ELEMENTS set) and debug
// builds stop at once; the program in the user's hands logs it once per name and goes on.
void reportUndeclaredElement(const QString& form, const QString& element);

// Replaces that reaction, for a test that looks at it; an empty function restores it.
using UndeclaredElementHandler = void (*)(const QString& form, const QString& element);
void setUndeclaredElementHandler(UndeclaredElementHandler handler);

// The macros that turn a window's table, written once as a macro of rows such as
//
//     ONE(lblKompaVersion, Label)  MANY(lblCopyright, Label, 0, 1)  MORE(lblCopyright, Label, 5, 5)
//
// (#define FRMABOUT_ELEMENTS(ONE, MANY, MORE) followed by the rows; MORE adds indexes to an
// array that MANY began) into a namespace with one constant per name and the table itself:
//
//     MQ27_DECLARE_FORM(frmAbout, FRMABOUT_ELEMENTS)
//
// gives frmAbout::lblKompaVersion, frmAbout::lblCopyright[1], frmAbout::kElements and the
// window's name frmAbout::kName.
#define MQ27_ELEMENT_CONSTANT(name, kind) inline constexpr ElementName name{u"" #name};
#define MQ27_ARRAY_CONSTANT(name, kind, first, last)                                               \
    inline constexpr ElementArray name{u"" #name, first, last};
#define MQ27_NO_CONSTANT(name, kind, first, last)
#define MQ27_ELEMENT_ROW(name, kind) ElementDecl{u"" #name, ElementKind::kind},
#define MQ27_ARRAY_ROW(name, kind, first, last)                                                    \
    ElementDecl{u"" #name, ElementKind::kind, first, last},
#define MQ27_DECLARE_FORM(form, TABLE)                                                             \
    namespace form {                                                                               \
    inline const QString kName = QStringLiteral(#form);                                            \
    TABLE(MQ27_ELEMENT_CONSTANT, MQ27_ARRAY_CONSTANT, MQ27_NO_CONSTANT)                            \
    inline constexpr ElementDecl kElements[] = {                                                   \
        TABLE(MQ27_ELEMENT_ROW, MQ27_ARRAY_ROW, MQ27_ARRAY_ROW)};                                  \
    }
