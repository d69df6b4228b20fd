#include "support/TestLibrary.h"

#include "library/CommandLine.h"
#include "library/SelfTests.h"
#include "records/AppDatabase.h"
#include "records/database/Request.h"

#include <QTimeZone>

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

Code TestLibrary::code(const QString &name) const
{
    for (const Code &each : store.codes().get()) {
        if (each.name == name)
            return each;
    }
    throw std::out_of_range("no such code: " + name.toStdString());
}

Document TestLibrary::paste(const QString &title, const QString &text)
{
    store.addPastedDocument(title, text);
    return document(title);
}

Document TestLibrary::document(const QString &title) const
{
    for (const Document &each : store.documents().get()) {
        if (each.title == title)
            return each;
    }
    throw std::out_of_range("no such document: " + title.toStdString());
}

QList<Coding> TestLibrary::storedCodings() const
{
    return queue->read([](Database &database) { return Coding::all().order(Column("createdAt")).fetchAll(database); });
}

QList<Code> TestLibrary::storedCodes() const
{
    return queue->read([](Database &database) { return Code::all().order(Column("createdAt")).fetchAll(database); });
}

ChangeCounter::ChangeCounter(const Notifier &notifier)
{
    QObject::connect(&notifier, &Notifier::changed, &m_context, [this] { ++m_count; });
}
