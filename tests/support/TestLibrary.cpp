#include "support/TestLibrary.h"

#include "library/CommandLine.h"
#include "library/SelfTests.h"
#include "records/AppDatabase.h"
#include "records/database/Request.h"

#include <QTimeZone>

#include <algorithm>
#include <stdexcept>

namespace {

template <typename R>
R named(const QList<R> &records, QString R::*member, const QString &name)
{
    const auto found = std::ranges::find(records, name, member);
    return found != records.end() ? *found : throw std::out_of_range("nothing is called " + name.toStdString());
}

} // namespace

TestLibrary::TestLibrary(const QStringList &arguments, std::unique_ptr<DatabaseQueue> existing)
    : queue(existing ? std::move(existing) : AppDatabase::makeFreshQueue()),
      store({.queue = *queue,
          .fileDialogs = fileDialogs,
          .fileViewer = fileViewer,
          .now = [this] { return m_now = m_now.addSecs(1); },
          .mayImport =
              [this](const ImportStep &step) {
                  steps.append(QStringLiteral("%1/%2 %3").arg(step.number).arg(step.count).arg(step.name));
                  return step.number != stopBefore;
              }}),
      m_now(QDate(2026, 3, 1), QTime(9, 0), QTimeZone::utc())
{
    store.bootstrap();
    const CommandLine commandLine(arguments);
    if (commandLine.quits())
        SelfTests(store, *queue, [this](const QString &line) { printed.append(line); }).run(commandLine);
    else
        SelfTests::prepareScreens(store, commandLine);
}

QList<Code> TestLibrary::makeCodes(const QStringList &names)
{
    QList<Code> codes;
    for (const QString &name : names)
        codes.append(store.createCode(name).value());
    return codes;
}

Document TestLibrary::paste(const QString &title, const QString &text)
{
    store.addPastedDocument(title, text);
    return document(title);
}

Code TestLibrary::code(const QString &name) const
{
    return named(store.codes().get(), &Code::name, name);
}

Document TestLibrary::document(const QString &title) const
{
    return named(store.documents().get(), &Document::title, title);
}

QList<Coding> TestLibrary::storedCodings() const
{
    return queue->read([](Database &database) { return Coding::all().order(Column("createdAt")).fetchAll(database); });
}

QList<Code> TestLibrary::storedCodes() const
{
    return queue->read([](Database &database) { return Code::all().order(Column("createdAt")).fetchAll(database); });
}
