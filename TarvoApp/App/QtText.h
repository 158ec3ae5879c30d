#pragma once

#include "LumoCore/Basics/Text.h"

#include <QString>
#include <QUrl>

#include <algorithm>
#include <string>
#include <string_view>

namespace tarvo {

/// Stands before a text that is read from the left, whatever its first letters are.
inline constexpr QChar fromTheLeft(0x200E);

/// A text for a window: names from the disk without stray bytes and control characters. One that begins with
/// a name in Hebrew or Arabic is still read from the left, as the sentence and the window around it are.
inline QString shown(std::string_view text) {
    const std::string printable = lumo::printable(text);
    const QString shown = QString::fromUtf8(printable.data(), static_cast<qsizetype>(printable.size()));
    return shown.isRightToLeft() ? fromTheLeft + shown : shown;
}

/// The same for a text of ours, or of a tool, that may have several lines.
inline QString shownLines(std::string_view text) {
    QString lines;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines += (begin == 0 ? QString() : QStringLiteral("\n")) + shown(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

/// What a person typed or a window holds, as bytes.
inline std::string bytesOf(const QString& text) {
    return text.toUtf8().toStdString();
}

/// An identifier as a window keeps it, exactly: identifiers hold paths, whose bytes need not be UTF-8.
/// Latin-1 gives every byte a character of its own, there and back.
inline QString keyOf(std::string_view id) {
    return QString::fromLatin1(id.data(), static_cast<qsizetype>(id.size()));
}

inline std::string idOf(const QString& key) {
    return key.toLatin1().toStdString();
}

/// The path of a file that a dialog of the desktop chose, as bytes: a name need not be text.
inline std::string pathOf(const QUrl& file) {
    QByteArray path = QByteArray::fromPercentEncoding(file.path(QUrl::FullyEncoded).toLatin1());
    while (path.size() > 1 && path.endsWith('/')) {
        path.chop(1);
    }
    return path.toStdString();
}

/// The address of a path, whatever its bytes.
inline QUrl urlOf(const std::string& path) {
    return QUrl::fromEncoded("file://" + QByteArray::fromStdString(path).toPercentEncoding("/"));
}

} // namespace tarvo
