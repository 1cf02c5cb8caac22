#include "sidebyside/ui/frmsidebyside.h"

#include "app/programpaths.h"
#include "app/ui/formregistry.h"
#include "app/ui/mdiform1.h"
#include "compare/compareoptions.h"
#include "settings/settings.h"
#include "sidebyside/ui/diffpane.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace pv {

namespace {

QString fileNameOf(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    return QString::fromStdString(slash == std::string::npos ? path : path.substr(slash + 1));
}

QLabel* pathLabel(const std::string& path, const char* name) {
    auto* label = new QLabel(QString::fromStdString(path));
    label->setObjectName(name);
    label->setToolTip(label->text());
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A long path must not widen the window; it is cut at the pane's edge.
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

// The rows of context kept above a change scrolled into view.
constexpr int kContextRows = 3;

const char* const kKeysTip = "F7: next change, Shift+F7: previous change, Esc or Ctrl+W: close";

} // namespace

frmSideBySide* frmSideBySide::open(const std::string& leftPath, const std::string& rightPath) {
    DiffOptions options;
    const CompareOptions settings = readCompareOptions(programSettings());
    options.ignoreCase = settings.fcC;
    options.compressWhite = settings.fcW;
    options.expandTabs = !settings.fcT;
    std::unique_ptr<FilePairDiff> pair;
    {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        struct Restore {
            ~Restore() { QApplication::restoreOverrideCursor(); }
        } restore;
        pair = std::make_unique<FilePairDiff>(leftPath, rightPath, options);
    }
    auto* window = new frmSideBySide(std::move(pair));
    if (MDIForm1* frame = mainWindow()) {
        frame->showChildInside(window, frame->mdiArea()->viewport()->size() * 0.9);
    } else {
        FormRegistry::add(window);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->show();
    }
    // The panes know their height only now: the first change is scrolled into
    // view again, as F7 would show it.
    window->goToChange(window->m_current);
    window->m_right->setFocus();
    return window;
}

frmSideBySide::frmSideBySide(std::unique_ptr<FilePairDiff> pair, QWidget* parent)
    : QWidget(parent), m_pair(std::move(pair)) {
    setObjectName("frmSideBySide");
    setWindowTitle(fileNameOf(m_pair->leftPath()) + " <-> " + fileNameOf(m_pair->rightPath()) +
                   " - Side by Side");
    buildControls();
    m_ignoreCase->setChecked(m_pair->options().ignoreCase);
    m_compressWhite->setChecked(m_pair->options().compressWhite);
    connect(m_ignoreCase, &QCheckBox::toggled, this, &frmSideBySide::applyToggles);
    connect(m_compressWhite, &QCheckBox::toggled, this, &frmSideBySide::applyToggles);
    resize(1000, 700);
    showPair();
    goToChange(0);
}

void frmSideBySide::buildControls() {
    m_previous = new QPushButton("Previous change");
    m_previous->setObjectName("PreviousChange");
    m_previous->setToolTip("Shift+F7");
    m_next = new QPushButton("Next change");
    m_next->setObjectName("NextChange");
    m_next->setToolTip("F7");
    m_ignoreCase = new QCheckBox("/c Ignore case");
    m_ignoreCase->setObjectName("IgnoreCase");
    m_compressWhite = new QCheckBox("/w Compress white space");
    m_compressWhite->setObjectName("CompressWhite");
    m_status = new QLabel;
    m_status->setObjectName("Status");
    connect(m_next, &QPushButton::clicked, this, &frmSideBySide::NextChange_Click);
    connect(m_previous, &QPushButton::clicked, this, &frmSideBySide::PreviousChange_Click);
    // The keys work wherever the focus is inside the window.
    auto* f7 = new QShortcut(QKeySequence(Qt::Key_F7), this);
    f7->setContext(Qt::WidgetWithChildrenShortcut);
    connect(f7, &QShortcut::activated, this, &frmSideBySide::NextChange_Click);
    auto* shiftF7 = new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F7), this);
    shiftF7->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shiftF7, &QShortcut::activated, this, &frmSideBySide::PreviousChange_Click);
    for (const QKeySequence& key :
         {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)}) {
        auto* close = new QShortcut(key, this);
        close->setContext(Qt::WidgetWithChildrenShortcut);
        connect(close, &QShortcut::activated, this, [this] { FormRegistry::unload(this); });
        // The child window's own Close item may claim the same key: either way
        // the key means close.
        connect(close, &QShortcut::activatedAmbiguously, this,
                [this] { FormRegistry::unload(this); });
    }
    m_status->setToolTip(kKeysTip);

    auto* bar = new QHBoxLayout;
    bar->addWidget(m_previous);
    bar->addWidget(m_next);
    bar->addSpacing(12);
    bar->addWidget(m_ignoreCase);
    bar->addWidget(m_compressWhite);
    bar->addStretch(1);
    bar->addWidget(m_status);

    m_left = new DiffPane(DiffPane::Side::Left);
    m_right = new DiffPane(DiffPane::Side::Right);
    m_hscroll = new QScrollBar(Qt::Horizontal);
    m_hscroll->setObjectName("HScroll");
    auto* grid = new QGridLayout;
    grid->setSpacing(2);
    grid->addWidget(pathLabel(m_pair->leftPath(), "LeftPath"), 0, 0);
    grid->addWidget(pathLabel(m_pair->rightPath(), "RightPath"), 0, 1);
    grid->addWidget(m_left, 1, 0);
    grid->addWidget(m_right, 1, 1);
    grid->addWidget(m_hscroll, 2, 0, 1, 2);
    auto* textPage = new QWidget;
    grid->setContentsMargins(0, 0, 0, 0);
    textPage->setLayout(grid);

    m_binary = new QLabel;
    m_binary->setObjectName("BinarySummary");
    m_binary->setAlignment(Qt::AlignCenter);
    m_binary->setWordWrap(true);
    m_binary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pages = new QStackedWidget;
    m_pages->addWidget(textPage);
    m_pages->addWidget(m_binary);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_pages, 1);

    // Vertical: each pane follows the other. Horizontal: the shared bar drives
    // both panes, and a pane scrolled by itself (Shift+wheel) moves the bar.
    QScrollBar* lv = m_left->verticalScrollBar();
    QScrollBar* rv = m_right->verticalScrollBar();
    connect(lv, &QScrollBar::valueChanged, rv, &QScrollBar::setValue);
    connect(rv, &QScrollBar::valueChanged, lv, &QScrollBar::setValue);
    for (DiffPane* pane : {m_left, m_right}) {
        QScrollBar* h = pane->horizontalScrollBar();
        connect(m_hscroll, &QScrollBar::valueChanged, h, &QScrollBar::setValue);
        connect(h, &QScrollBar::valueChanged, m_hscroll, &QScrollBar::setValue);
        connect(h, &QScrollBar::rangeChanged, this, &frmSideBySide::syncHorizontalRange);
        connect(pane, &DiffPane::rowClicked, this, [this](size_t row) {
            const size_t change = m_pair->diff().changeAtRow(row);
            if (change < m_pair->diff().changes().size()) {
                m_current = change;
                m_left->setCurrentChange(change);
                m_right->setCurrentChange(change);
                updateStatus();
            }
        });
    }
}

void frmSideBySide::syncHorizontalRange() {
    QScrollBar* l = m_left->horizontalScrollBar();
    QScrollBar* r = m_right->horizontalScrollBar();
    m_hscroll->setRange(0, std::max(l->maximum(), r->maximum()));
    m_hscroll->setPageStep(l->pageStep());
    m_hscroll->setSingleStep(l->singleStep());
}

const IntraLineSpans& frmSideBySide::spansOfRow(size_t row) {
    auto it = m_spans.find(row);
    if (it == m_spans.end()) {
        const DiffRow& r = m_pair->diff().rows()[row];
        it = m_spans
                 .emplace(row,
                          intraLineSpans(m_pair->left().line(size_t(r.left)),
                                         m_pair->right().line(size_t(r.right)), m_pair->options()))
                 .first;
    }
    return it->second;
}

void frmSideBySide::showPair() {
    m_spans.clear();
    if (m_pair->isBinary()) {
        m_binary->setText(QString::fromStdString(binarySummaryText(m_pair->binarySummary())));
        m_pages->setCurrentWidget(m_binary);
        m_ignoreCase->setEnabled(false);
        m_compressWhite->setEnabled(false);
    }
    auto spans = [this](size_t row) -> const IntraLineSpans& { return spansOfRow(row); };
    m_left->setPair(m_pair.get(), spans);
    m_right->setPair(m_pair.get(), spans);
    syncHorizontalRange();
}

void frmSideBySide::applyToggles() {
    // Keep the line at the top of the view in view after the rows change.
    const auto& before = m_pair->diff().rows();
    const size_t top = size_t(m_left->firstVisibleRow());
    const std::int32_t topLine = top < before.size() ? before[top].left : DiffRow::kNone;
    DiffOptions options = m_pair->options();
    options.ignoreCase = m_ignoreCase->isChecked();
    options.compressWhite = m_compressWhite->isChecked();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_pair->setOptions(options);
    QApplication::restoreOverrideCursor();
    showPair();

    const auto& rows = m_pair->diff().rows();
    size_t row = 0;
    if (topLine != DiffRow::kNone)
        while (row < rows.size() && rows[row].left < topLine)
            ++row;
    const auto& changes = m_pair->diff().changes();
    m_current = 0;
    while (m_current + 1 < changes.size() && changes[m_current].firstRow + kContextRows < row)
        ++m_current;
    m_left->setCurrentChange(m_current);
    m_right->setCurrentChange(m_current);
    m_right->verticalScrollBar()->setValue(int(row));
    updateStatus();
}

void frmSideBySide::goToChange(size_t change) {
    const auto& changes = m_pair->diff().changes();
    if (change < changes.size()) {
        m_current = change;
        m_right->verticalScrollBar()->setValue(
            std::max(0, int(changes[change].firstRow) - kContextRows));
    }
    m_left->setCurrentChange(m_current);
    m_right->setCurrentChange(m_current);
    updateStatus();
}

void frmSideBySide::NextChange_Click() {
    if (m_current + 1 < m_pair->diff().changes().size())
        goToChange(m_current + 1);
}

void frmSideBySide::PreviousChange_Click() {
    if (m_current > 0)
        goToChange(m_current - 1);
}

QString frmSideBySide::statusText() const {
    return m_status->text();
}

void frmSideBySide::updateStatus() {
    const size_t count = m_pair->diff().changes().size();
    QString text = m_pair->isBinary() ? QString("binary files")
                                      : QString::fromStdString(changeStatusText(m_current, count));
    if (!m_pair->isBinary() && !m_pair->diff().aligned())
        text += " (too different to align: lines paired from the top)";
    m_status->setText(text);
    m_next->setEnabled(m_current + 1 < count);
    m_previous->setEnabled(m_current > 0 && count > 0);
}

} // namespace pv
