#ifndef KCOMMTEST_H
#define KCOMMTEST_H

#include <QtTest>

#include <array>

class KTestAppDir;

// Data tables one line per row: addColumns<QString, bool>({"text", "flag"})
// and addRow("tag", "a text", true). Texts become UTF-8 QStrings; every
// other value must have its column's type exactly.
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

// Runs the build's probe program "commprobe" from a copy in folder of appDir:
// a fresh process with empty caches that sees the host as the suite set it up
// (saved to the suite's profile first) and what the suite laid out around it.
// One text per operation, or a single line saying why the probe failed; err
// receives its error output.
QStringList runProbe(const KTestAppDir& appDir, const QStringList& operations,
                     const QString& folder = QString(), QString* err = nullptr);

#endif // KCOMMTEST_H
