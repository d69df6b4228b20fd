#include "support/TestArchive.h"

#include "platform/AtomicFile.h"

#include <QDataStream>
#include <QDir>
#include <QFileInfo>

#include <array>

using namespace Qt::StringLiterals;

namespace {

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
    QByteArray description;
    QDataStream fields(&description, QIODevice::WriteOnly);
    fields.setByteOrder(QDataStream::LittleEndian);
    constexpr quint16 namesInUtf8 = 0x0800;
    constexpr quint32 moment = 0x5821'0000;
    fields << quint16(20) << namesInUtf8 << quint16(bytes.isEmpty() ? 0 : 8) << moment << checksum(bytes)
           << quint32(data.size()) << quint32(bytes.size()) << quint16(name.size()) << quint16(0);
    QDataStream directory(&m_directory, QIODevice::Append);
    directory.setByteOrder(QDataStream::LittleEndian);
    directory.writeRawData("PK\x01\x02\x1E\x03", 6); // made by Unix, which has modes
    directory.writeRawData(description.constData(), int(description.size()));
    directory << quint16(0) << quint16(0) << quint16(0) << quint32(mode << 16) << quint32(m_members.size());
    m_directory += name;
    m_members += "PK\x03\x04" + description + name + data;
    ++m_count;
    return *this;
}

QByteArray TestArchive::bytes() const
{
    QByteArray end;
    QDataStream fields(&end, QIODevice::WriteOnly);
    fields.setByteOrder(QDataStream::LittleEndian);
    fields << quint32(0) << m_count << m_count << quint32(m_directory.size()) << quint32(m_members.size())
           << quint16(0);
    return m_members + m_directory + "PK\x05\x06" + end;
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

QString OwnTemporaryFolder::write(const QString &name, QByteArrayView bytes) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    AtomicFile::write(path(name), bytes);
    return path(name);
}

bool OwnTemporaryFolder::hasLeftovers() const
{
    return !QDir(m_temporary.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}
