#pragma once

#include <qwt_scale_draw.h>

/// Numbers as they stand in the fields: the language's groups of digits would make 1.500 of 1500.
class PlainNumbers : public QwtScaleDraw
{
public:
    QwtText label(double value) const override { return QString::number(value); }
};
