#pragma once

#include <memory>

class Z7DataWidget;

/// The pages have fixed numbers, which are their identity in the tree, the titles and the modified marks.
namespace PageNumber {
enum Number {
    Network = 0,
    DeviceStatus = 1,
    Last = 16,
};
constexpr int none = -1;
} // namespace PageNumber

/// Creates the page of that number, 0 to 16, without a parent; null for any other number.
std::unique_ptr<Z7DataWidget> createDataPage(int number);
