#include "platform/SSZipArchive.h"

#include "platform/ArchiveWriting.h"
#include "platform/PathNames.h"

#include <QFile>

namespace vantoro {
namespace {

bool writeZip(const QString& path, std::vector<CreateInput> inputs, const QString& password, WriterMonitor* monitor)
{
    ArchiveWriting writing;
    writing.path = path;
    writing.inputs = std::move(inputs);
    writing.options.kind = "zip";
    writing.password = password;
    writing.monitor = monitor;
    return writeArchive(std::move(writing));
}

}

bool SSZipArchive::createZipFileAtPath(const QString& path, const QString& contentsOfDirectory,
                                       bool keepParentDirectory, const QString& password, WriterMonitor* monitor)
{
    // "folder/." is the folder even where "folder" is a link to it, and has no name of its own.
    CreateInput input;
    input.path = QFile::encodeName(contentsOfDirectory).toStdString() + "/.";
    if (keepParentDirectory)
        input.name = QFile::encodeName(lastPathComponent(contentsOfDirectory)).toStdString();
    return writeZip(path, {input}, password, monitor);
}

bool SSZipArchive::createZipFileAtPath(const QString& path, const QStringList& filesAtPaths, const QString& password,
                                       WriterMonitor* monitor)
{
    std::vector<CreateInput> inputs;
    for (const QString& file : filesAtPaths)
        inputs.push_back({.path = QFile::encodeName(file).toStdString()});
    return writeZip(path, std::move(inputs), password, monitor);
}

}
