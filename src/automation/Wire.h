#pragma once

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStringList>
#include <QVariant>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// How a type of the model goes over the bus: the D-Bus type, and the conversions from and to what Qt makes of it.
template <class T>
struct Wire;

template <>
struct Wire<bool> {
    static constexpr const char* kType = "b";
    static bool From(const QVariant& v) { return v.toBool(); }
    static QVariant To(bool v) { return v; }
};

template <>
struct Wire<std::int16_t> {
    static constexpr const char* kType = "n";
    static std::int16_t From(const QVariant& v) { return v.value<std::int16_t>(); }
    static QVariant To(std::int16_t v) { return QVariant::fromValue(v); }
};

template <>
struct Wire<std::int32_t> {
    static constexpr const char* kType = "i";
    static std::int32_t From(const QVariant& v) { return v.toInt(); }
    static QVariant To(std::int32_t v) { return v; }
};

template <>
struct Wire<double> {
    static constexpr const char* kType = "d";
    static double From(const QVariant& v) { return v.toDouble(); }
    static QVariant To(double v) { return v; }
};

template <>
struct Wire<std::string> {
    static constexpr const char* kType = "s";
    static std::string From(const QVariant& v) { return v.toString().toStdString(); }
    static QVariant To(std::string_view v) { return QString::fromUtf8(v.data(), static_cast<qsizetype>(v.size())); }
};

template <>
struct Wire<std::vector<std::string>> {
    static constexpr const char* kType = "as";
    static std::vector<std::string> From(const QVariant& v) {
        std::vector<std::string> texts;
        const QStringList list = v.toStringList();
        for (const QString& text : list) {
            texts.push_back(text.toStdString());
        }
        return texts;
    }
    static QVariant To(const std::vector<std::string>& v) {
        QStringList list;
        for (const std::string& text : v) {
            list << QString::fromStdString(text);
        }
        return list;
    }
};

template <>
struct Wire<std::vector<double>> {
    static constexpr const char* kType = "ad";
    static std::vector<double> From(const QVariant& v) {
        const auto list = v.value<QList<double>>();
        return {list.begin(), list.end()};
    }
};

template <>
struct Wire<QDBusObjectPath> {
    static constexpr const char* kType = "o";
    static QVariant To(const QDBusObjectPath& v) { return QVariant::fromValue(v); }
};

template <>
struct Wire<QDBusVariant> {
    static constexpr const char* kType = "v";
    static QVariant To(const QDBusVariant& v) { return QVariant::fromValue(v); }
};

/// The type in which a parameter or result of the model's functions is kept meanwhile.
template <class T>
struct Kept {
    using Type = std::remove_cvref_t<T>;
};
template <>
struct Kept<std::string_view> {
    using Type = std::string;
};
template <class T>
using KeptType = typename Kept<std::remove_cvref_t<T>>::Type;
