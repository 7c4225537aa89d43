#pragma once

#include "core/Paths.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#ifndef Q_OS_WIN
#include <sys/stat.h>
#endif

namespace Tarno
{

/// A temporary folder that is removed with the object. Names are relative to it.
class TemporaryFolder
{
public:
    TemporaryFolder() : TemporaryFolder(QDir::tempPath()) {}

    explicit TemporaryFolder(const QString& in) : m_folder(in + QStringLiteral("/tarno-test-XXXXXX"))
    {
        if (!m_folder.isValid()) {
            qFatal("cannot create a temporary folder: %s", qPrintable(m_folder.errorString()));
        }
    }

    std::string Path() const { return QDir::toNativeSeparators(m_folder.path()).toStdString(); }

    std::string PathOf(std::string_view name) const
    {
        return FromPath(ToPath(Path() + '/' + std::string(name)).make_preferred());
    }

    void Write(std::string_view name, std::string_view bytes) const
    {
        std::ofstream file(ToPath(PathOf(name)), std::ios::binary | std::ios::trunc);
        if (!file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
            qFatal("cannot write %s", PathOf(name).c_str());
        }
    }

    /// Returns the contents of the file. Fails the test if it cannot be read.
    std::string Read(std::string_view name) const
    {
        std::ifstream file(ToPath(PathOf(name)), std::ios::binary);
        if (!file) {
            QTest::qFail(("cannot read " + PathOf(name)).c_str(), __FILE__, __LINE__);
        }
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    /// Returns the sorted names of all entries of the folder.
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(ToPath(Path()))) {
            names.push_back(FromPath(entry.path().filename()));
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    void MakeFolder(std::string_view name) const
    {
        std::filesystem::create_directories(ToPath(PathOf(name)));
    }

    // tests that call these are skipped on Windows
#ifdef Q_OS_WIN
    static void MakeLink(std::string_view /*name*/, const std::string& /*target*/)
    {
        qFatal("links are not supported");
    }

    static void MakePipe(std::string_view /*name*/)
    {
        qFatal("pipes are not supported");
    }
#else
    void MakeLink(std::string_view name, const std::string& target) const
    {
        std::filesystem::create_symlink(ToPath(target), ToPath(PathOf(name)));
    }

    /// Creates a pipe without a reader. Opening it in blocking mode never returns.
    void MakePipe(std::string_view name) const
    {
        if (::mkfifo(PathOf(name).c_str(), 0600) != 0) {
            qFatal("cannot make the pipe %s", PathOf(name).c_str());
        }
    }
#endif

private:
    QTemporaryDir m_folder;
};

} // namespace Tarno
