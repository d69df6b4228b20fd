#include "support/TestArchive.h"

#include <QDir>

#include <array>
#include <concepts>

using namespace Qt::StringLiterals;

namespace {

template <std::integral Integer>
QByteArray littleEndian(Integer value)
{
    QByteArray bytes;
    for (size_t index = 0; index < sizeof value; ++index)
        bytes.append(char(value >> index * 8 & 0xFF));
    return bytes;
}

constexpr auto checksumSteps()
{
    std::array<quint32, 256> steps{};
    for (quint32 index = 0; index < steps.size(); ++index) {
        steps[index] = index;
        for (int bit = 0; bit < 8; ++bit)
            steps[index] = steps[index] >> 1 ^ (steps[index] & 1 ? 0xEDB88320 : 0);
    }
    return steps;
}

quint32 checksum(const QByteArray &bytes)
{
    static constexpr std::array<quint32, 256> steps = checksumSteps();
    quint32 sum = ~quint32(0);
    for (const char byte : bytes)
        sum = sum >> 8 ^ steps[(sum ^ uchar(byte)) & 0xFF];
    return ~sum;
}

QByteArray deflated(const QByteArray &bytes)
{
    const QByteArray stream = qCompress(bytes, 9);
    return stream.sliced(6, stream.size() - 10); // without size, header and checksum
}

} // namespace

TestArchive &TestArchive::add(const QByteArray &name, const QByteArray &bytes, quint32 mode)
{
    const QByteArray data = bytes.isEmpty() ? bytes : deflated(bytes);
    const QByteArray description = littleEndian(quint16(bytes.isEmpty() ? 0 : 8)) + littleEndian(quint32(0x5821'0000))
        + littleEndian(checksum(bytes)) + littleEndian(quint32(data.size())) + littleEndian(quint32(bytes.size()))
        + littleEndian(quint16(name.size()));
    const auto flags = littleEndian(quint16(0x0800)); // names in UTF-8
    m_directory += "PK\x01\x02" + littleEndian(quint16(0x031E)) + littleEndian(quint16(20)) + flags + description
        + QByteArray(8, '\0') + littleEndian(quint32(mode << 16)) + littleEndian(quint32(m_members.size())) + name;
    m_members += "PK\x03\x04" + littleEndian(quint16(20)) + flags + description + QByteArray(2, '\0') + name + data;
    ++m_count;
    return *this;
}

QByteArray TestArchive::bytes() const
{
    return m_members + m_directory + "PK\x05\x06" + QByteArray(4, '\0') + littleEndian(m_count) + littleEndian(m_count)
        + littleEndian(quint32(m_directory.size())) + littleEndian(quint32(m_members.size())) + QByteArray(2, '\0');
}

OwnTemporaryFolder::OwnTemporaryFolder() : m_before(qgetenv("TMPDIR"))
{
    qputenv("TMPDIR", m_temporary.path().toUtf8());
}

OwnTemporaryFolder::~OwnTemporaryFolder()
{
    if (m_before.isNull())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", m_before);
}

bool OwnTemporaryFolder::hasLeftovers() const
{
    return !QDir(m_temporary.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}
