#include "look/image.h"

#include <QFile>
#include <QHash>
#include <QString>

using namespace Qt::StringLiterals;

namespace platform::look {

QIcon imageNamed(const QString &fileName) {
    const QString path = u"images:"_s + fileName;
    if (!QFile::exists(path)) {
        return {};
    }
    // One icon per name, because Qt caches scaled pixmaps per icon.
    static QHash<QString, QIcon> images;
    QIcon &image = images[fileName];
    if (image.isNull()) {
        image = QIcon(path);
    }
    return image;
}

}  // namespace platform::look
