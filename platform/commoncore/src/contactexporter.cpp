// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "contactexporter.h"

#include <memory>

#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>

#include "ebookcontacts.h"

namespace ConnUi {
namespace {

constexpr qint64 cardLimit = 4 << 20;
constexpr qsizetype partsLimit = 5000;

struct Unref
{
    void operator()(EVCard *card) const { EBookContacts::load()->g_object_unref(card); }
};
using Card = std::unique_ptr<EVCard, Unref>;

void warn(const QString &path, const QString &reason)
{
    qWarning("ContactExporter: unable to read %s: %s", qUtf8Printable(path), qUtf8Printable(reason));
}

// The path of a contact's card; empty for what is no contact.
QString cardPath(const QString &contact)
{
    const auto scheme = QStringLiteral("contact:");
    const QString id = contact.sliced(contact.startsWith(scheme) ? scheme.size() : contact.size());
    if (id.isEmpty() || id.contains(QLatin1Char('/')) || id.contains(QStringLiteral("..")))
        return QString();
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/contacts/%1.vcf").arg(id);
}

QByteArray readCardFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        warn(path, file.errorString());
        return QByteArray();
    }
    const QByteArray data = file.read(cardLimit + 1);
    if (data.size() > cardLimit) {
        warn(path, QStringLiteral("too large for a contact card"));
        return QByteArray();
    }
    return data;
}

// Lines may be folded inside a character, which the library takes for two broken ones.
QByteArray joinCharacters(const QByteArray &data)
{
    static const QRegularExpression fold(QStringLiteral("\\r?\\n[ \\t](?=[\\x80-\\xbf])"));
    return QString::fromLatin1(data).remove(fold).toLatin1();
}

// The library's time grows with the square of the parts of a value and of its soft line breaks.
bool hasTooManyParts(const QByteArray &data)
{
    return data.count(';') + data.count(',') + data.count("=\n") + data.count("=\r\n") > partsLimit;
}

// The library reads beyond the end of a text that stops inside of a quoted-printable character, and takes a
// byte of zero for the end.
QByteArray ended(const QByteArray &data)
{
    return QByteArray(data.constData()) + "\r\n\r\n";
}

Card readCard(const QString &path)
{
    QByteArray data = readCardFile(path);
    if (data.startsWith("\xef\xbb\xbf"))
        data.remove(0, 3);
    data = joinCharacters(data.trimmed());
    if (data.isEmpty())
        return nullptr;
    if (!data.toUpper().startsWith("BEGIN:VCARD")) {
        warn(path, QStringLiteral("not a contact card"));
        return nullptr;
    }
    if (hasTooManyParts(data)) {
        warn(path, QStringLiteral("too many parts for a contact card"));
        return nullptr;
    }
    const EBookContacts *library = EBookContacts::load();
    if (!library)
        return nullptr;
    data = ended(data);
    Card card(library->e_vcard_new());
    library->e_vcard_construct_full(card.get(), data.constData(), data.size(), nullptr);
    return card;
}

// The decoded parts of an attribute, as many as asked for; empty where the attribute has none.
QStringList values(EVCard *card, const char *name, int count)
{
    // The library leaves the soft line breaks of quoted-printable values where they were.
    static const QRegularExpression softBreak(QStringLiteral("=\\r?\\n"));
    const EBookContacts *library = EBookContacts::load();
    QStringList result;
    EVCardAttribute *attribute = library->e_vcard_get_attribute(card, name);
    for (GList *i = attribute ? library->e_vcard_attribute_get_values_decoded(attribute) : nullptr; i;
         i = i->next) {
        const auto *value = static_cast<const GString *>(i->data);
        result.append(QString::fromUtf8(value->str, value->len).remove(softBreak).trimmed());
    }
    result.resize(count);
    return result;
}

} // namespace

QTemporaryFile *ContactExporter::createContactCardFile(const QString &contact)
{
    auto *file = new QTemporaryFile(QDir::tempPath() + QStringLiteral("/contact-XXXXXX.vcf"));
    const QString path = cardPath(contact);
    if (path.isEmpty())
        qWarning("ContactExporter: %s is not a contact", qUtf8Printable(contact));
    const QByteArray data = path.isEmpty() ? QByteArray() : readCardFile(path);
    if (!file->open() || file->write(data) != data.size() || !file->flush())
        qWarning("ContactExporter: unable to write %s: %s", qUtf8Printable(file->fileTemplate()),
                 qUtf8Printable(file->errorString()));
    file->close();
    return file;
}

void ContactExporter::resolveContactInfo(const QFileInfo &file, QString &first, QString &second)
{
    first.clear();
    second.clear();
    const Card card = readCard(file.filePath());
    if (!card)
        return;
    // N starts with the family name.
    const QStringList name = values(card.get(), EVC_N, 2);
    first = name[1];
    second = name[0];
    if (first.isEmpty() && second.isEmpty())
        first = values(card.get(), EVC_FN, 1).constFirst();
}

QByteArray ContactExporter::contactPhoto(const QString &contact)
{
    const QString path = cardPath(contact);
    if (!QFileInfo::exists(path))
        return QByteArray();
    const Card card = readCard(path);
    if (!card)
        return QByteArray();
    const EBookContacts *library = EBookContacts::load();
    EVCardAttribute *photo = library->e_vcard_get_attribute(card.get(), EVC_PHOTO);
    if (!photo)
        return QByteArray();
    GString *data = library->e_vcard_attribute_get_value_decoded(photo);
    const QByteArray bytes(data->str, qsizetype(data->len));
    g_string_free(data, true);
    return bytes;
}

} // namespace ConnUi
