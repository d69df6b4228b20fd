#pragma once

#include "kit/controls/Sheet.h"
#include "kit/theme/Roles.h"

#include <QString>

#include <functional>
#include <optional>

class QLineEdit;
class QVBoxLayout;

/// A question or a message in a small sheet: a title, a message, perhaps a field, and one or two buttons at the right,
/// Cancel left of the action. Answers through callbacks, after it has closed.
class Alert final : public Sheet {
    Q_OBJECT

public:
    struct Field {
        QString text = {}; ///< selected at first, so that typing replaces it
        QString placeholder;
        QString accessibleName = {}; ///< the placeholder if empty
    };
    struct Content {
        QString title;
        QString message = {}; ///< may be empty
        std::optional<Field> field = {};
        QString action; ///< the label of the button that acts
        ButtonRole actionRole = ButtonRole::prominent; ///< a destructive one isn't the default: Cancel has the focus
        QString cancel = {}; ///< the label of the other button; empty for none
        /// `text` is what the field holds.
        std::function<void(const QString &text)> onAction = {};
        std::function<void()> onCancel = {}; ///< also when the alert is dismissed otherwise
    };

    /// Opens an alert in the window of `parent`. Owned by that window; deletes itself after its answer.
    static Alert *show(QWidget &parent, const Content &content);

private:
    Alert(QWidget &parent, const Content &content);

    void addTexts(QVBoxLayout &column, const Content &content);
    void addField(QVBoxLayout &column, const Field &field);
    void addButtons(QVBoxLayout &column, const Content &content);

    QLineEdit *m_field = nullptr;
};
