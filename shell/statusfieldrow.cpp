#include "shell/statusfieldrow.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <numeric>

namespace {

constexpr int gap = 8;

int sum(const QVector<int> &widths)
{
    return std::accumulate(widths.begin(), widths.end(), 0);
}

} // namespace

QVector<int> fairShares(const QVector<int> &wanted, int room)
{
    // From the most modest to the one that wants most, each may take an equal part of what is left then.
    QVector<int> order(wanted.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&wanted](int a, int b) { return wanted[a] < wanted[b]; });
    QVector<int> shares(wanted.size());
    int left = qMax(0, room);
    int takers = order.size();
    for (const int index : order) {
        shares[index] = qMin(wanted[index], left / takers--);
        left -= shares[index];
    }
    return shares;
}

StatusFieldRow::StatusFieldRow(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

StatusField *StatusFieldRow::add(const char *objectName, const QString &title, StatusField::Click click)
{
    m_fields.append(new StatusField(objectName, title, click, this));
    return m_fields.constLast();
}

QSize StatusFieldRow::sizeHint() const
{
    QSize size;
    for (const StatusField *field : m_fields)
        size = QSize(
            size.width() + field->sizeHint().width() + gap, qMax(size.height(), field->sizeHint().height()));
    return size;
}

bool StatusFieldRow::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest) {
        arrange();
        // Another font; the width is the window's affair.
        if (sizeHint().height() != height())
            updateGeometry();
    }
    return QWidget::event(event);
}

void StatusFieldRow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void StatusFieldRow::arrange()
{
    QVector<int> wanted;
    for (const StatusField *field : qAsConst(m_fields))
        wanted.append(field->sizeHint().width());
    const auto gaps = int(std::count_if(wanted.begin(), wanted.end(), [](int width) { return width > 0; }));
    const int room = width() - gaps * gap;
    QVector<int> shares = fairShares(wanted, room);
    const int stretched = m_fields.indexOf(m_stretched);
    const int rest = room - sum(shares);
    int left = 0;
    for (int i = 0; i < m_fields.size(); ++i) {
        // An empty field keeps the room, so that the others stay.
        const int share = shares[i] + (i == stretched ? qMax(0, rest) : 0);
        m_fields[i]->setGeometry(left, 0, m_fields[i]->said().isEmpty() ? 0 : share, height());
        left += share + (wanted[i] > 0 ? gap : 0);
    }
    update();
}

void StatusFieldRow::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    for (const StatusField *field : qAsConst(m_fields)) {
        const int x = field->x() - gap / 2;
        if (field->width() > 0 && x > 0)
            painter.drawLine(x, 3, x, height() - 3);
    }
}
