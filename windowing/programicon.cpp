#include "windowing/programicon.h"

#include <QDir>
#include <QImage>
#include <QPixmap>
#include <QResource>

using namespace Qt::StringLiterals;

namespace platform {

QIcon programIcon() {
    // From plain pixels, a file for each size, named by it: to read a picture file, Qt loads its
    // plugins for every kind of picture.
    QIcon icon;
    const QDir sizes(u":/window-icon"_s);
    for (const QString &size : sizes.entryList()) {
        const QResource pixels(sizes.filePath(size));
        icon.addPixmap(QPixmap::fromImage(
            QImage(pixels.data(), size.toInt(), size.toInt(), QImage::Format_RGBA8888)));
    }
    return icon;
}

}  // namespace platform
