#pragma once
// ReportView: the control that shows a report: pages, group tree, search, zoom, copy, and the way from a figure to its
// screen.

#include <memory>
#include <string>
#include <string_view>

#include "platform/forms/Control.h"

namespace kv {

class Report;

class ReportView : public Control {
public:
    ReportView(Form& form, std::string name);
    ~ReportView() override;
    std::string kind() const override { return "ReportView"; }
    /// "Page 1 of 3"; while pages are still being laid out "Page 1 of 3..."; empty without a report.
    std::string text() const override;

    /// Shows a report that has been run. It stays the caller's and must outlive the view or be taken back with nullptr.
    /// Page 1 is there on return; the rest is laid out while the user reads, with a progress bar and Cancel.
    void setReport(Report* report);
    void setShowGroupTree(bool show);
    /// The row with pages, zoom and search above the pages; off for a form that has such a row of its own.
    void setTools(bool shown);
    bool busy() const;    ///< still laying out
    void cancelLayout();  ///< stays with the pages that are there
    void finishLayout();  ///< lays out the rest at once

    int pages() const;
    int page() const;  ///< from 1; the one that takes most of the view
    void goToPage(int page);
    /// The texts of a page, a line each, cells apart by tabs.
    std::string pageText(int page) const;

    int zoom() const;  ///< percent
    void setZoom(int percent);
    void fitWidth();
    void fitPage();

    /// Goes to the next place of the text after the current one, around the end; false when there is none.
    bool find(std::string_view text, bool forward = true);
    int found() const;  ///< places found by the last search
    std::string selectedText() const;
    void copy() const;

    /// Opens what stands behind the marked text, as Enter on the pages does; false when nothing does.
    bool openMarked();

    /// A double click or Enter on a place that leads to a screen: its name and the key.
    Event<std::string, std::string> onDrill;
    Event<> onPageChange;  ///< another page, or more pages
    Event<> onLayoutDone;

private:
    struct Impl;
    void startLayout();
    void layoutSlice(int ms_max);
    void layoutEnded();
    void showState();
    void fillTree();
    void drill(const std::string& screen, const std::string& key);
    bool key(int key, int modifiers);
    std::unique_ptr<Impl> impl_;
};

}  // namespace kv
