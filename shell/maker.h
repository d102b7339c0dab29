#pragma once

#include <QString>

/// What the window says of the program and its maker.
namespace Maker {

/// The version of the project.
QString programVersion();
/// The address of the maker's home page; a setting of the language file.
QString homePage();

} // namespace Maker
