// The application without a display: it prints the trees and leaves a picture of its window.

#include "TestPaths.h"

#include <QImage>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace
{
struct AppRun
{
    std::string output;
    int status = -1;
};

AppRun RunApp(std::string const& arguments)
{
    AppRun run;
    // The application keeps its settings under a home of its own, gone after the run.
    const std::filesystem::path home = PrivateTestFile("-home");
    const std::string command = "env -u DISPLAY -u WAYLAND_DISPLAY -u XDG_CONFIG_HOME HOME=" + home.string() +
                                " " + SONARIUM_APP + " " + arguments + " 2>/dev/null";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    char buffer[4096];
    size_t read = 0;
    while ((read = fread(buffer, 1, sizeof buffer, pipe.get())) > 0)
        run.output.append(buffer, read);
    run.status = pclose(pipe.release());
    std::filesystem::remove_all(home);
    return run;
}
} // namespace

TEST(AppOffscreen, PrintsTheTreesAndRendersTheMainWindow)
{
    const AppRun run = RunApp(SONARIUM_SAMPLES_DIR "/Demo");
    ASSERT_EQ(run.status, 0) << run.output;
    EXPECT_EQ(run.output.rfind("No display", 0), 0u) << "the run says why no window opens";
    EXPECT_NE(run.output.find("tree Audio"), std::string::npos);
    EXPECT_NE(run.output.find("- Audio Objects"), std::string::npos);
    EXPECT_NE(run.output.find("- Events"), std::string::npos);

    const QRegularExpression line(QStringLiteral("window: (.+\\.png) \\((\\d+)x(\\d+)\\)"));
    const QRegularExpressionMatch match = line.match(QString::fromStdString(run.output));
    ASSERT_TRUE(match.hasMatch()) << run.output;
    const QString path = match.captured(1);
    QImage image(path);
    ASSERT_FALSE(image.isNull()) << path.toStdString();
    EXPECT_EQ(image.width(), match.captured(2).toInt());
    EXPECT_EQ(image.height(), match.captured(3).toInt());
    // The main window's usual size, so the picture is of the whole window.
    EXPECT_EQ(image.size(), QSize(1200, 800));

    // Not blank: rows, icons and frames give many colours, and a good share of pixels differ
    // from the background.
    QSet<QRgb> colours;
    const QRgb background = image.pixel(image.width() / 4, image.height() - 40);
    long long differing = 0;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2)
        {
            colours.insert(image.pixel(x, y));
            differing += image.pixel(x, y) != background;
        }
    EXPECT_GT(colours.size(), 50);
    EXPECT_GT(differing, 5000);
    std::filesystem::remove(path.toStdString());
}

TEST(AppOffscreen, AScriptStaysHeadlessAndABadProjectIsNamed)
{
    const std::filesystem::path script = PrivateTestFile(".sonscript");
    {
        std::unique_ptr<FILE, int (*)(FILE*)> file(fopen(script.c_str(), "w"), fclose);
        fputs("print tree Events\n", file.get());
    }
    const AppRun scripted = RunApp(std::string(SONARIUM_SAMPLES_DIR "/Demo --script ") + script.string());
    EXPECT_EQ(scripted.status, 0);
    EXPECT_NE(scripted.output.find("    + Player_Events"), std::string::npos) << scripted.output;
    EXPECT_EQ(scripted.output.find("window:"), std::string::npos);
    std::filesystem::remove(script);

    const AppRun missing = RunApp("/nonexistent/project/folder");
    EXPECT_NE(missing.status, 0);
    EXPECT_EQ(missing.output.find("window:"), std::string::npos);
}

TEST(AppOffscreen, ScriptsKeepOutOfTheUsersSettingsUnlessToldWhere)
{
    // Closing a pane saves its state in the preferences: the run writes settings.
    const std::filesystem::path work = PrivateTestFile("-settings");
    const std::filesystem::path script = work / "close.sonscript";
    std::filesystem::create_directories(work);
    {
        std::unique_ptr<FILE, int (*)(FILE*)> file(fopen(script.c_str(), "w"), fclose);
        fputs("toggle AudioObjects/Characters\nclose-pane Audio\n", file.get());
    }
    auto run = [&](std::string const& extra)
    {
        const std::string command = "env -u DISPLAY -u WAYLAND_DISPLAY XDG_CONFIG_HOME=" + (work / "user").string() +
                                    " " + SONARIUM_APP + " " SONARIUM_SAMPLES_DIR "/Demo --script " +
                                    script.string() + extra + " >/dev/null 2>&1";
        return std::system(command.c_str());
    };
    EXPECT_EQ(run(""), 0);
    EXPECT_FALSE(std::filesystem::exists(work / "user")) << "nothing of the user's was read or written";
    EXPECT_EQ(run(" --settings " + (work / "chosen").string()), 0);
    EXPECT_TRUE(std::filesystem::exists(work / "chosen" / "preferences.json"));
    EXPECT_FALSE(std::filesystem::exists(work / "user"));

    const AppRun help = RunApp("--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.output.rfind("usage: sonarium [PROJECT] [--script FILE|-] [--settings DIR]", 0), 0u) << help.output;
    EXPECT_NE(help.output.find("--settings DIR"), std::string::npos);
    std::filesystem::remove_all(work);
}
