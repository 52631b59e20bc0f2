#include "tests/view/picture_compare.hpp"

#include <QColor>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace orvel::test {

namespace {

namespace fs = std::filesystem;

/// Glyphs may be rounded a little differently where a font was updated.
constexpr int kSameColour = 24;
constexpr double kAllowedShare = 0.002;

fs::path folderOf(const char* variable, const char* below) {
    const char* folder = std::getenv(variable);
    return fs::path(folder == nullptr ? "." : folder) / below;
}

bool isSame(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) <= kSameColour &&
           std::abs(qGreen(a) - qGreen(b)) <= kSameColour &&
           std::abs(qBlue(a) - qBlue(b)) <= kSameColour;
}

/// Marks in red where the two differ; gives the share of pixels that do.
double differences(const QImage& expected, const QImage& actual, QImage& map) {
    map = actual.convertToFormat(QImage::Format_Grayscale8).convertToFormat(QImage::Format_RGB32);
    qsizetype count = 0;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            if (isSame(expected.pixel(x, y), actual.pixel(x, y))) continue;
            map.setPixel(x, y, qRgb(255, 0, 0));
            ++count;
        }
    }
    return static_cast<double>(count) / (static_cast<double>(actual.width()) * actual.height());
}

bool save(const QImage& image, const fs::path& path) {
    fs::create_directories(path.parent_path());
    constexpr int kSmallest = 0;
    return image.save(QString::fromStdString(path.string()), "PNG", kSmallest);
}

}  // namespace

testing::AssertionResult looksAsAccepted(const std::string& name, const QImage& picture) {
    const std::string file =
        name + "@" + std::to_string(std::lround(picture.devicePixelRatio())) + "x";
    const fs::path reference =
        folderOf("ORVEL_SOURCE_DIR", "tests/view/pictures") / (file + ".png");
    const fs::path artifact = folderOf("ORVEL_BUILD_DIR", "pictures") / (file + ".png");
    const QImage actual = picture.convertToFormat(QImage::Format_RGB32);
    if (!save(actual, artifact)) return testing::AssertionFailure() << "cannot write " << artifact;
    if (std::getenv("ORVEL_ACCEPT") != nullptr) {
        save(actual, reference);
        return testing::AssertionSuccess();
    }
    const QImage expected(QString::fromStdString(reference.string()));
    if (expected.isNull()) return testing::AssertionFailure() << "no picture " << reference;
    if (expected.size() != actual.size()) {
        return testing::AssertionFailure()
               << artifact << " is " << actual.width() << " x " << actual.height() << ", expected "
               << expected.width() << " x " << expected.height();
    }
    QImage map;
    const double share = differences(expected, actual, map);
    if (share <= kAllowedShare) return testing::AssertionSuccess();
    const fs::path mapFile = artifact.parent_path() / (file + ".differs.png");
    save(map, mapFile);
    return testing::AssertionFailure()
           << share * 100 << " % of the pixels differ; see " << artifact << " and " << mapFile;
}

}  // namespace orvel::test
