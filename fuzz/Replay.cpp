#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

/// Runs the target on each file of the folder that is the only argument. A failed requirement aborts; the last name
/// printed is that of the input.
int main(int argc, char **argv)
{
    const QDir folder(argc == 2 ? QFile::decodeName(argv[1]) : QString());
    const QStringList names = folder.entryList(QDir::Files);
    for (const QString &name : names) {
        std::puts(qPrintable(name));
        std::fflush(stdout);
        QFile file(folder.filePath(name));
        if (!file.open(QFile::ReadOnly))
            return EXIT_FAILURE;
        const QByteArray input = file.readAll();
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(input.constData()), size_t(input.size()));
    }
    return names.isEmpty() ? EXIT_FAILURE : EXIT_SUCCESS;
}
