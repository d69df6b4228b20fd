#pragma once

#include "kit/controls/Capsule.h"
#include "kit/controls/FocusHandling.h"

#include <QPointer>

class ElidedLabel;
class QProgressBar;
class Scrim;

/// The progress of a long job with files, shown over a dimmed window, with a button to stop it. Deleting it uncovers
/// the window.
class ProgressCapsule final : public Capsule {
    Q_OBJECT

public:
    explicit ProgressCapsule(QWidget &window);
    ~ProgressCapsule() override;

    /// `number` counts from 1.
    void setProgress(int number, int count, const QString &name);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void stopped();

protected:
    bool focusNextPrevChild(bool next) override;

private:
    void placeInMiddle();

    ElidedLabel *m_count;
    ElidedLabel *m_name;
    QProgressBar *m_bar;
    QPointer<Scrim> m_scrim;
    FocusReturn m_focusReturn;
};
