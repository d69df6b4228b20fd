#include "kit/controls/AccessibleDialogs.h"

#include <QAccessibleWidget>
#include <QDialog>

namespace {

class AccessibleDialog final : public QAccessibleWidget {
public:
    explicit AccessibleDialog(QDialog &dialog) : QAccessibleWidget(&dialog, QAccessible::Dialog) { }

    /// Qt leaves out that a dialog is modal.
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = widget()->isModal();
        return state;
    }
};

/// Qt asks for the object's class first and then for each class it derives from.
QAccessibleInterface *describe(const QString &className, QObject *object)
{
    if (className == u"QDialog")
        return new AccessibleDialog(*static_cast<QDialog *>(object));
    if (className == u"Popover")
        return new QAccessibleWidget(static_cast<QWidget *>(object), QAccessible::Dialog);
    return nullptr;
}

} // namespace

void describeDialogsToScreenReaders()
{
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(describe), true);
}
