#include "platform/freedesktop/bus/DBusValue.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QMetaType>

namespace tollbeam {
namespace {

std::optional<Value> numbersOf(const QDBusArgument& structure) {
  const QString signature = structure.currentSignature();
  if (!signature.startsWith(QLatin1Char('('))) return std::nullopt;
  for (const QChar type : signature.mid(1, signature.size() - 2)) {
    if (type != QLatin1Char('d')) return std::nullopt;
  }
  List numbers;
  structure.beginStructure();
  while (!structure.atEnd()) numbers.emplace_back(qdbus_cast<double>(structure));
  structure.endStructure();
  return Value(std::move(numbers));
}

}  // namespace

std::optional<Value> valueFromBus(const QVariant& variant) {
  if (variant.metaType() == QMetaType::fromType<QDBusVariant>())
    return valueFromBus(variant.value<QDBusVariant>().variant());
  if (variant.metaType() == QMetaType::fromType<QDBusArgument>())
    return numbersOf(variant.value<QDBusArgument>());
  switch (variant.metaType().id()) {
    case QMetaType::Bool:
      return Value(variant.toBool());
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
      return Value(std::int64_t{variant.toLongLong()});
    case QMetaType::ULongLong:
      return Value(std::uint64_t{variant.toULongLong()});
    case QMetaType::Double:
      return Value(variant.toDouble());
    case QMetaType::QString:
      return Value(variant.toString().toStdString());
    default:
      return std::nullopt;
  }
}

}  // namespace tollbeam
