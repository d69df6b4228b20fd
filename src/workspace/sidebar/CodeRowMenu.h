#pragma once

#include "records/Code.h"

#include <QList>
#include <QMenu>

/// What can be done with a code. Only tells what was picked; the codes it names are those at the time of its making.
class CodeRowMenu final : public QMenu {
    Q_OBJECT

public:
    /// `codes` are all codes of the project, in the order in which they are to be offered.
    CodeRowMenu(const Code &code, const QList<Code> &codes, QWidget *parent);

Q_SIGNALS:
    void renamePicked();
    void colorPicked(const QString &hex);
    void topLevelPicked();
    void parentPicked(const QUuid &parentID);
    void mergeTargetPicked(const QUuid &targetID);
    void deletePicked();

private:
    void addColors();
    /// A submenu with the codes other than this one.
    void addCodes(const QString &title, const QList<Code> &others, void (CodeRowMenu::*picked)(const QUuid &));
};
