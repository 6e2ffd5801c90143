// SPDX-License-Identifier: MIT
#include "Quorvell/desktop/PictureFormats.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageReader>
#include <QSize>

namespace quorvell {

std::optional<std::string> PictureFormats::png(std::string_view picture) const
{
    QImageReader::setAllocationLimit(maximumMegabytes);
    // Borrowed for the length of this call.
    QByteArray bytes = QByteArray::fromRawData(picture.data(), static_cast<qsizetype>(picture.size()));
    QBuffer input(&bytes);
    QImageReader reader(&input);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true); // photographs say which way up they are
    const QSize size = reader.size();
    const QSize most(maximumSide, maximumSide);
    if (size.isValid() && (size.width() > maximumSide || size.height() > maximumSide))
        reader.setScaledSize(size.scaled(most, Qt::KeepAspectRatio));
    QImage image = reader.read();
    if (image.isNull())
        return std::nullopt;
    if (image.width() > maximumSide || image.height() > maximumSide)
        image = image.scaled(most, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QByteArray png;
    QBuffer output(&png);
    if (!output.open(QIODevice::WriteOnly) || !image.save(&output, "PNG"))
        return std::nullopt;
    return png.toStdString();
}

} // namespace quorvell
