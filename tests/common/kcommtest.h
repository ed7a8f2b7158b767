#ifndef KCOMMTEST_H
#define KCOMMTEST_H

#include "ktestappdir.h"
#include "ktestenvironment.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/khksoftwaresettings.h>

#include <QtTest>

#include <array>
#include <tuple>
#include <utility>

// Data tables one line per row: addColumns<QString, bool>({"text", "flag"}),
// addRow("tag", "a text", true), and in the test
// const auto [text, flag] = fetch<QString, bool>({"text", "flag"}).
// Texts become UTF-8 QStrings; every other value must have its column's
// type exactly.
template <typename... T>
void addColumns(const std::array<const char*, sizeof...(T)>& names)
{
    auto name = names.begin();
    (QTest::addColumn<T>(*name++), ...);
}

inline QString cell(const char* text)
{
    return QString::fromUtf8(text);
}

template <typename T>
const T& cell(const T& value)
{
    return value;
}

template <typename... T>
void addRow(const char* tag, const T&... values)
{
    (QTest::newRow(tag) << ... << cell(values));
}

template <typename... T, std::size_t... I>
std::tuple<T...> fetch(const std::array<const char*, sizeof...(T)>& names,
                       std::index_sequence<I...>)
{
    return {*static_cast<T*>(QTest::qData(names[I], qMetaTypeId<T>()))...};
}

template <typename... T>
std::tuple<T...> fetch(const std::array<const char*, sizeof...(T)>& names)
{
    return fetch<T...>(names, std::index_sequence_for<T...>());
}

inline QString text(bool value)
{
    return value ? "true" : "false";
}

// A settings store of the host as a plain INI file, root 0 by default.
inline QSettings raw(KHKSoftwareSettings::HKEY root = KHKSoftwareSettings::CurrentUser)
{
    return QSettings(KHKSoftwareSettings::storeFileName(root), QSettings::IniFormat);
}

// Runs the build's probe program "commprobe" from a copy in folder of appDir:
// a fresh process with empty caches that sees the host as the suite set it up
// (saved to the suite's profile first) and what the suite laid out around it.
// One text per operation, or a single line saying why the probe failed; err
// receives its error output.
QStringList runProbe(const KTestAppDir& appDir, const QStringList& operations,
                     const QString& folder = QString(), QString* err = nullptr);

#endif // KCOMMTEST_H
