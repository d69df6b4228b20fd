#include "library/CommandLine.h"

using namespace Qt::StringLiterals;

namespace {

struct Switch {
    QStringView name;
    QStringView argument;
    QStringView effect;
};

constexpr Switch printing[] = {
    {CommandLine::help, u"", u"say this"},
    {CommandLine::version, u"", u"say which version of Vorn this is"},
    {CommandLine::exportDemo, u"FOLDER", u"write the three reports into FOLDER"},
    {CommandLine::qdpxTest, u"FOLDER", u"export the project into FOLDER, import it and compare"},
    {CommandLine::importTest, u"FILE", u"read one document and show what came in"},
    {CommandLine::queryTest, u"", u"run three queries over the first two codes"},
    {CommandLine::freqTest, u"", u"count words"},
};

constexpr Switch showing[] = {
    {CommandLine::seedDemo, u"", u"load the sample content into an empty library first"},
    {CommandLine::queryDemo, u"", u"show the passages that bear the first two codes"},
    {CommandLine::querySheet, u"", u"ask for a compound query"},
    {CommandLine::freqDemo, u"", u"show the most frequent words"},
    {CommandLine::freqDemoTerm, u"", u"show them, and where the first one occurs"},
};

QString line(const Switch &entry)
{
    constexpr qsizetype effectColumn = 24;
    QString result = u"  "_s.append(entry.name);
    if (!entry.argument.isEmpty())
        result.append(u' ').append(entry.argument);
    return result.leftJustified(effectColumn).append(entry.effect);
}

} // namespace

QString CommandLine::helpText()
{
    QStringList lines{u"Usage: vorn [SWITCH]..."_s,
        u"A workbench for qualitative data analysis. Without a switch it opens its window."_s, QString(),
        u"Switches that print on standard output and quit, without a display:"_s};
    for (const Switch &entry : printing)
        lines.append(line(entry));
    lines.append({QString(), u"Switches that open the window; --seed-demo also goes with those above:"_s});
    for (const Switch &entry : showing)
        lines.append(line(entry));
    return lines.join(u'\n');
}

std::optional<QString> CommandLine::valueOf(QStringView name) const
{
    const qsizetype position = m_arguments.indexOf(name);
    if (position < 0 || position + 1 >= m_arguments.size())
        return {};
    return m_arguments.at(position + 1);
}

bool CommandLine::quits() const
{
    return valueOf(exportDemo) || valueOf(qdpxTest) || valueOf(importTest) || has(queryTest) || has(freqTest);
}
