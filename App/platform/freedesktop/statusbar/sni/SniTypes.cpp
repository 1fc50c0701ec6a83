#include "platform/freedesktop/statusbar/sni/SniTypes.h"

#include <QDBusMetaType>
#include <QImage>
#include <QtEndian>

namespace tollbeam {

void registerSniTypes() {
  qDBusRegisterMetaType<SniPixmap>();
  qDBusRegisterMetaType<SniPixmaps>();
  qDBusRegisterMetaType<SniToolTip>();
  qDBusRegisterMetaType<DBusMenuNode>();
  qDBusRegisterMetaType<DBusMenuProperties>();
  qDBusRegisterMetaType<DBusMenuPropertiesList>();
  qDBusRegisterMetaType<DBusMenuEvent>();
  qDBusRegisterMetaType<DBusMenuEvents>();
  // Under the names that the declarations of slots use, by which QtDBus looks them up.
  qRegisterMetaType<DBusMenuPropertiesList>("tollbeam::DBusMenuPropertiesList");
  qRegisterMetaType<DBusMenuEvents>("tollbeam::DBusMenuEvents");
}

SniPixmap toSniPixmap(const QImage& image) {
  const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
  SniPixmap pixmap{argb.width(), argb.height(), QByteArray(argb.sizeInBytes(), 0)};
  // Lines of 32-bit pixels have no padding.
  qToBigEndian<quint32>(argb.constBits(), argb.sizeInBytes() / 4, pixmap.bytes.data());
  return pixmap;
}

}  // namespace tollbeam
