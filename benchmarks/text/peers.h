#pragma once

#include <QHash>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTemporaryDir>

#include <memory>

/// The items that show a message, all made from QML and laid out by their own means.
class Peers
{
public:
    enum Kind { Ours, PlainText, RichText };

    Peers();

    /// A new item of `kind` that shows `message` within `width`, laid out. Lays out by its own size when it
    /// is asked for its height.
    [[nodiscard]] std::unique_ptr<QQuickItem> create(Kind kind, const QString &message, double width);

    /// `message` as `kind` takes it in its property "text".
    [[nodiscard]] QString content(Kind kind, const QString &message) const;

    /// Makes `item` lay out within `width`.
    static void setWidth(Kind kind, QQuickItem &item, double width);

private:
    [[nodiscard]] QString pictureTag(const QString &emoji) const;
    void writePictures();

    QQmlEngine engine;
    QTemporaryDir pictures;
    QHash<QString, QString> pictureTags; ///< by emoji
    std::vector<std::unique_ptr<QQmlComponent>> components;
};
