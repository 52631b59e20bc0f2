#pragma once

#include <QImage>
#include <gtest/gtest.h>

#include <string>

namespace orvel::test {

/// Compares a picture with tests/view/pictures/NAME@SCALEx.png, the scale being the picture's own.
/// The picture is kept in the build folder, beside a map of the differences where there are any.
/// With ORVEL_ACCEPT set the reference is rewritten instead.
testing::AssertionResult looksAsAccepted(const std::string& name, const QImage& picture);

}  // namespace orvel::test
