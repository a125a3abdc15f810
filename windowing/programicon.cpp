#include "windowing/programicon.h"

#include <QDir>
#include <QImage>
#include <QPixmap>
#include <QResource>

using namespace Qt::StringLiterals;

namespace platform {

QIcon programIcon() {
    // From raw pixels, in one file for each size that has the size as its name: to read an image
    // file, Qt would load its plugins for every image format.
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
