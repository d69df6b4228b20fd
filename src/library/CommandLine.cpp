#include "library/CommandLine.h"

CommandLine::CommandLine(QStringList arguments) : m_arguments(std::move(arguments))
{
}

bool CommandLine::has(QStringView name) const
{
    return m_arguments.contains(name);
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
