#include "files/Exceptions.h"
#include "files/KXFileWrapper.h"
#include "files/PropertyList.h"
#include "files/SystemError.h"

#include <QDataStream>
#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>
#include <QStringDecoder>

namespace vantoro {
namespace {

bool writeAtomically(const QString& path, const QByteArray& bytes, QString* error)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    if (error)
        *error = file.errorString();
    return false;
}

bool canBeStored(const QVariant& content)
{
    const QMetaType type = content.metaType();
    return type.isValid() && type.hasRegisteredDataStreamOperators();
}

QByteArray stored(const QVariant& content)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << content;
    return bytes;
}

/// Nothing for kinds that have no form of their own.
std::optional<QByteArray> plainForm(const QVariant& content)
{
    switch (content.typeId()) {
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return PropertyList::bytes(content);
    case QMetaType::QByteArray:
        return content.toByteArray();
    case QMetaType::QString:
        return content.toString().toUtf8();
    default:
        return std::nullopt;
    }
}

std::optional<QVariant> readPropertyList(const QString& path)
{
    const auto bytes = KXFileWrapper::readFileAtPathAsData(path);
    return bytes ? PropertyList::value(*bytes) : std::nullopt;
}

}

bool KXFileWrapper::writeFileAtPath(const QString& path, const QVariant& content, QString* error)
{
    if (!content.isValid())
        throw NamedException(QStringLiteral("Invalid content"), QStringLiteral("content can't be nil."));
    const auto form = plainForm(content);
    if (!form && !canBeStored(content))
        throw NamedException(
            QStringLiteral("Invalid content type"),
            QStringLiteral("content of type %1 is not handled.").arg(QString::fromLatin1(content.typeName())));
    createFileAtPath(path, true, error);
    clearError(error);
    const bool isWritten = writeAtomically(absolutePath(path), form ? *form : stored(content), error);
    return form.has_value() || isWritten;
}

std::optional<QString> KXFileWrapper::readFileAtPath(const QString& path, QString* error)
{
    return readFileAtPathAsString(path, error);
}

std::optional<QString> KXFileWrapper::readFileAtPathAsString(const QString& path, QString* error)
{
    const auto bytes = readFileAtPathAsData(path, error);
    if (!bytes)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(*bytes);
    if (!decoder.hasError())
        return text;
    if (error)
        *error = QStringLiteral("not UTF-8 text");
    return std::nullopt;
}

std::optional<QByteArray> KXFileWrapper::readFileAtPathAsData(const QString& path, QString* error)
{
    clearError(error);
    QFile file(absolutePath(path));
    if (file.open(QIODevice::ReadOnly)) {
        QByteArray bytes = file.readAll();
        if (file.error() == QFileDevice::NoError)
            return bytes;
    }
    if (error)
        *error = file.errorString();
    return std::nullopt;
}

std::optional<QByteArray> KXFileWrapper::readFileAtPathAsMutableData(const QString& path, QString* error)
{
    return readFileAtPathAsData(path, error);
}

std::optional<QVariantList> KXFileWrapper::readFileAtPathAsArray(const QString& path)
{
    const auto value = readPropertyList(path);
    return value && value->typeId() == QMetaType::QVariantList ? std::optional(value->toList()) : std::nullopt;
}

std::optional<QVariantList> KXFileWrapper::readFileAtPathAsMutableArray(const QString& path)
{
    return readFileAtPathAsArray(path);
}

std::optional<QVariantMap> KXFileWrapper::readFileAtPathAsDictionary(const QString& path)
{
    const auto value = readPropertyList(path);
    return value && value->typeId() == QMetaType::QVariantMap ? std::optional(value->toMap()) : std::nullopt;
}

std::optional<QVariantMap> KXFileWrapper::readFileAtPathAsMutableDictionary(const QString& path)
{
    return readFileAtPathAsDictionary(path);
}

std::optional<QVariant> KXFileWrapper::readFileAtPathAsJSON(const QString& path, QString* error)
{
    const auto bytes = readFileAtPathAsData(path, error);
    if (!bytes)
        return std::nullopt;
    QJsonParseError problem;
    const auto document = QJsonDocument::fromJson(*bytes, &problem);
    if (!document.isNull())
        return document.toVariant();
    if (error)
        *error = problem.errorString();
    return std::nullopt;
}

}
