#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

class Appearance;

/// How the window is to look: which of the palettes applies.
struct Look {
    bool isDark = false;
    bool hasHighContrast = false;

    bool operator==(const Look &) const = default;
};

/// Every colour of the window in one look. Tints are translucent and are painted over whatever surface lies below.
struct ThemeColors {
    /// Tint of the window and fill of everything accented in every look: sRGB 0.40, 0.39, 0.86.
    inline static const QColor accent = QColor::fromRgbF(0.40F, 0.39F, 0.86F);

    Look look;

    // Surfaces, from the frame to the paper.
    QColor window; ///< menu bar
    QColor sidebar;
    QColor content; ///< middle column
    QColor page; ///< reader, text fields, memos
    QColor sheet; ///< sheets and dialogs
    QColor raised; ///< menus, popovers, capsules
    QColor control; ///< bordered buttons and pop-up buttons

    // Text. Tertiary never stands on a tinted row nor in the search field.
    QColor text;
    QColor secondary;
    QColor tertiary;
    QColor quaternary; ///< decoration only
    QColor onAccent; ///< on prominent and destructive fills
    QColor accentText; ///< links and the word that was searched
    QColor destructiveText;

    // Lines and edges.
    QColor hairline; ///< between surfaces
    QColor raisedHairline; ///< inside raised surfaces
    QColor raisedEdge; ///< around raised surfaces
    QColor controlEdge; ///< around buttons and fields

    // Accent and fills.
    QColor accentForeground; ///< icons, focus ring, caret
    QColor accentHover;
    QColor accentPressed;
    QColor destructiveFill;
    QColor destructiveHover;
    QColor destructivePressed;

    // Tints.
    QColor selection; ///< selected row of the list in focus
    QColor quietSelection; ///< selected row of another list
    QColor hover;
    QColor textSelection; ///< selected text in editors
    QColor track; ///< segmented control, search field, disabled buttons
    QColor knob; ///< the raised segment
    QColor pill;
    QColor wordBar;
    QColor scrim; ///< over the window under a sheet
    QColor scrollThumb;

    [[nodiscard]] static ThemeColors of(Look look);
    /// What Qt's own widgets paint with. Labels say `QPalette::Dark` for secondary, `PlaceholderText` for tertiary and
    /// `Link` for accented text.
    [[nodiscard]] QPalette palette() const;
};

/// `tint` painted over an opaque `surface`, as one opaque colour.
[[nodiscard]] QColor mixed(const QColor &surface, const QColor &tint);

/// The one set of colours that the window shows. Widgets ask for them while they paint and keep no copies, so a change
/// of look only needs a repaint, which the change of the application's palette brings about by itself
/// (`QEvent::PaletteChange`).
namespace Theme {

/// The colours of the present look. Light until `setLook` is called.
[[nodiscard]] const ThemeColors &colors();

/// Shows everything in `look` from now on: sets the application's palette and thereby repaints every widget.
void setLook(Look look);

/// Installs the style, the fonts and the look that `appearance` asks for, and follows its changes.
void follow(const Appearance &appearance);

/// A code's stored colour, opaque; the accent where `hex` is no colour.
[[nodiscard]] QColor codeColor(const QString &hex);

} // namespace Theme
