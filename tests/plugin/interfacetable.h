#pragma once

#include <QMetaObject>
#include <QString>
#include <QStringList>

/// The interface of a type as text, one line per fact (see interface/README.md), so that what a file says and
/// what a class declares can be compared as two lists of lines.
namespace interfacetable {

/// What a file says: every property brings its setter and its notify signal, every `?` the forms without the
/// parameters from there on. `mistakes` gets the lines that could not be read.
[[nodiscard]] QStringList expected(const QString &fileText, QStringList *mistakes);

/// What the class of `object` declares beyond its base class, with the values that the properties have now.
/// `known` is what a table says: where it leaves out a default ("*") or the names of parameters, so does
/// this.
[[nodiscard]] QStringList declared(const QObject &object, const QStringList &known);

} // namespace interfacetable
