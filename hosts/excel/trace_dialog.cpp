#include "hosts/excel/trace_dialog.h"

#include "addin/cells.h"
#include "addin/excel_operations.h"
#include "addin/host.h"
#include "addin/lifecycle.h"
#include "commands/trace_html.h"
#include "commands/trace_tree.h"
#include "hosts/excel/dialog.h"

#include <shellapi.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

namespace qx::excel {

namespace {

constexpr int close_button = IDOK, page_button = 100, help_button = IDHELP;
constexpr int tree_number = 101, header_number = 102, summary_number = 103;
constexpr std::uint32_t filled_at_once = 2000; ///< children of a node that appear with it; the rest follow while idle
constexpr UINT_PTR filling = 1;

const wchar_t* const headers[] = {L"Function, Variable Name or Message Type", L"Value", L"Description"};
constexpr int header_widths[] = {406, 121, 406};

/// The picture of each kind: a sign on a ground, or on none.
struct Picture {
    const wchar_t* sign;
    COLORREF colour;
    bool filled;
};
constexpr COLORREF red = RGB(179, 32, 44), amber = RGB(138, 90, 0), blue = RGB(36, 86, 184), green = RGB(29, 111, 66),
                   violet = RGB(107, 63, 160), teal = RGB(11, 107, 112), grey = RGB(93, 90, 107);
constexpr Picture pictures[] = {
    {L"\u00D7", red, true}, {L"f", violet, false},    {L"i", blue, true},      {L"=", green, true},
    {L"t", grey, false},    {L"", grey, false},       {L"!", amber, true},     {L"x", grey, false},
    {L"( )", blue, false},  {L"\u2207", teal, true},  {L"f", violet, true},    {L"\u21B5", green, false},
    {L"", grey, false},     {L"f", teal, false},      {L"", grey, false},      {L"\u2022", grey, false},
    {L"", grey, false},     {L"\u21BB", teal, true},  {L"[f]", violet, false}, {L"?", teal, true},
    {L"", grey, false},     {L"\u21BB", teal, false}, {L"", grey, false},      {L"[ ]", green, false},
};

struct LegendEntry {
    const wchar_t* label;
    int picture;
};
constexpr LegendEntry legend[] = {
    {L"Error", 0},
    {L"External Function", 10},
    {L"Arguments", 8},
    {L"Variable Value", 7},
    {L"Loop", 17},
    {L"Range Screening", 9},
    {L"Detail", 4},
    {L"Array Function", 18},
    {L"Function called internally", 1},
    {L"Internal function", 13},
    {L"Return Value", 3},
    {L"Function Return", 11},
    {L"Warning", 6},
    {L"Information", 2},
    {L"Argument Value", 15},
    {L"Array Item", 23},
    {L"Inputs", 8},
    {L"Input Value", 7},
    {L"If condition met", 19},
    {L"Loop Pass", 21},
};

/// The formula of the active cell, as far as the host gives it.
TraceSubject subject_of_active_cell() {
    HostCell cell, formula;
    if (Excel(xlfActiveCell, cell.get(), 0) != xlretSuccess ||
        Excel(xlfGetFormula, formula.get(), 1, cell.get()) != xlretSuccess || formula->type() != xltypeStr)
        return {};
    return {text_in(*formula), {}};
}

class TraceDialog final : public Dialog {
  public:
    explicit TraceDialog(clsTrace2& trace) : Dialog(L"Quexel Trace", 990, 680), tree_(build_trace_tree(trace)) {}
    ~TraceDialog() override {
        if (pictures_ != nullptr) ImageList_Destroy(pictures_);
    }

  private:
    void create() override {
        header_ = add(WC_HEADERW, L"", HDS_HORZ | WS_BORDER, header_number);
        for (int i = 0; i < 3; ++i) {
            HDITEMW item{};
            item.mask = HDI_TEXT | HDI_WIDTH | HDI_FORMAT;
            item.pszText = const_cast<wchar_t*>(headers[i]);
            item.cxy = dots(header_widths[i]);
            item.fmt = HDF_LEFT | HDF_STRING;
            SendMessageW(header_, HDM_INSERTITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        }
        view_ = add(WC_TREEVIEWW, L"",
                    WS_TABSTOP | WS_BORDER | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS |
                        TVS_NOHSCROLL | TVS_INFOTIP,
                    tree_number);
        add_pictures();
        legend_title_ = add(L"STATIC", L"Legend", SS_LEFT);
        for (const LegendEntry& entry : legend) legend_.push_back(add(L"STATIC", entry.label, SS_LEFT | SS_NOPREFIX));
        note_ = add(L"STATIC",
                    L"A copy of this output has been written to text file called qx_Trace.qxl, located in current "
                    L"working directory.",
                    SS_LEFT | SS_NOPREFIX);
        if (!tree_.in_a_file) ShowWindow(note_, SW_HIDE); // the file could not be written
        summary_ = add(L"STATIC", wide(tree_.summary).c_str(), SS_LEFT | SS_NOPREFIX, summary_number);
        page_ = add(L"BUTTON", L"&Page", WS_TABSTOP | BS_PUSHBUTTON, page_button);
        help_ = add(L"BUTTON", L"&Help", WS_TABSTOP | BS_PUSHBUTTON, help_button);
        close_ = add(L"BUTTON", L"&Close", WS_TABSTOP | BS_DEFPUSHBUTTON, close_button);
        fill(TVI_ROOT, 0, static_cast<std::uint32_t>(tree_.size()));
        const HTREEITEM root = TreeView_GetRoot(view_);
        if (first_error_ != nullptr) {
            TreeView_SelectItem(view_, first_error_);
            TreeView_EnsureVisible(view_, first_error_);
        } else if (root != nullptr) {
            if (TreeView_GetNextSibling(view_, root) == nullptr) TreeView_Expand(view_, root, TVE_EXPAND);
            TreeView_SelectItem(view_, root);
        }
        SetFocus(view_);
    }

    void rescaled() override {
        add_pictures();
        for (int i = 0; i < 3; ++i) {
            HDITEMW item{};
            item.mask = HDI_WIDTH;
            item.cxy = dots(header_widths[i]);
            SendMessageW(header_, HDM_SETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        }
    }

    void lay_out(int width, int height) override {
        const int margin = dots(10), line = dots(20), button_width = dots(88), button_height = dots(28);
        const int inner = width - 2 * margin;
        const int columns = std::max(1, inner / dots(190));
        const int rows = (static_cast<int>(std::size(legend)) + columns - 1) / columns;
        const int note_height = line * (inner < dots(640) ? 2 : 1);
        const int below = line + rows * line + dots(6) + note_height + dots(6) + button_height + margin;
        const int header_height = dots(24);
        const int view_height = std::max(dots(80), height - below - margin - header_height - dots(6));
        MoveWindow(header_, margin, margin, inner, header_height, TRUE);
        MoveWindow(view_, margin, margin + header_height, inner, view_height, TRUE);
        int y = margin + header_height + view_height + dots(6);
        MoveWindow(legend_title_, margin, y, inner, line, TRUE);
        y += line;
        for (std::size_t i = 0; i < legend_.size(); ++i) {
            const int row = static_cast<int>(i) % rows, column = static_cast<int>(i) / rows;
            MoveWindow(legend_[i], margin + column * dots(190) + dots(22), y + row * line, dots(166), line, TRUE);
        }
        y += rows * line + dots(6);
        MoveWindow(note_, margin, y, inner, note_height, TRUE);
        y += note_height + dots(6);
        int x = width - margin - button_width;
        for (const HWND button : {close_, help_, page_}) {
            MoveWindow(button, x, y, button_width, button_height, TRUE);
            x -= button_width + dots(8);
        }
        MoveWindow(summary_, margin, y + dots(5), std::max(dots(40), x + button_width - margin), line, TRUE);
    }

    /// The pictures of the legend are part of the ground.
    void paint(HDC canvas) override {
        for (std::size_t i = 0; i < legend_.size(); ++i) {
            RECT place;
            GetWindowRect(legend_[i], &place);
            MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&place), 2);
            ImageList_Draw(pictures_, legend[i].picture, canvas, place.left - dots(22), place.top, ILD_TRANSPARENT);
        }
    }

    void pressed(int button) override {
        if (button == close_button)
            close();
        else if (button == help_button)
            show_help(help_file(), HelpPage::topic, std::to_string(trace_help_topic));
        else if (button == page_button)
            open_page();
    }

    LRESULT notified(const NMHDR& what) override {
        if (what.hwndFrom == header_) {
            if (what.code == HDN_ITEMCHANGEDW || what.code == HDN_ENDTRACKW || what.code == HDN_ITEMCHANGEDA)
                InvalidateRect(view_, nullptr, TRUE);
            return 0;
        }
        if (what.hwndFrom != view_) return 0;
        switch (what.code) {
        case TVN_GETDISPINFOW: {
            TVITEMW& item = reinterpret_cast<NMTVDISPINFOW*>(const_cast<NMHDR*>(&what))->item;
            if ((item.mask & TVIF_TEXT) != 0) copy(text_of(item.lParam), item.pszText, item.cchTextMax);
            return 0;
        }
        case TVN_GETINFOTIPW: {
            NMTVGETINFOTIPW& tip = *reinterpret_cast<NMTVGETINFOTIPW*>(const_cast<NMHDR*>(&what));
            copy(text_of(tip.lParam), tip.pszText, tip.cchTextMax);
            return 0;
        }
        case TVN_ITEMEXPANDINGW: {
            const NMTREEVIEWW& change = reinterpret_cast<const NMTREEVIEWW&>(what);
            if (change.action == TVE_EXPAND || change.action == TVE_TOGGLE) fill_below(change.itemNew.hItem);
            return 0;
        }
        case NM_CUSTOMDRAW:
            return draw(reinterpret_cast<NMTVCUSTOMDRAW&>(const_cast<NMHDR&>(what)));
        default:
            return 0;
        }
    }

    std::wstring text_of(LPARAM node) const {
        std::wstring text = wide(tree_.text(static_cast<std::size_t>(node)));
        std::replace(text.begin(), text.end(), L'\n', L' ');
        std::replace(text.begin(), text.end(), L'\r', L' ');
        return text;
    }
    static void copy(const std::wstring& text, wchar_t* to, int room) {
        if (to == nullptr || room < 1) return;
        const std::size_t length = text.copy(to, static_cast<std::size_t>(room) - 1);
        to[length] = L'\0';
    }

    // --- Filling ---

    LPARAM node_of(HTREEITEM item) const {
        TVITEMW asked{};
        asked.mask = TVIF_PARAM;
        asked.hItem = item;
        SendMessageW(view_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked));
        return asked.lParam;
    }

    void fill_below(HTREEITEM item) {
        if (TreeView_GetChild(view_, item) != nullptr) return;
        const auto node = static_cast<std::size_t>(node_of(item));
        fill(item, static_cast<std::uint32_t>(node + 1), tree_.nodes[node].end);
    }

    HTREEITEM insert(HTREEITEM parent, HTREEITEM after, std::uint32_t node) {
        TVINSERTSTRUCTW line{};
        line.hParent = parent;
        line.hInsertAfter = after;
        line.itemex.mask = TVIF_TEXT | TVIF_PARAM | TVIF_CHILDREN | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
        line.itemex.pszText = LPSTR_TEXTCALLBACKW;
        line.itemex.lParam = node;
        line.itemex.cChildren = tree_.has_children(node) ? 1 : 0;
        line.itemex.iImage = line.itemex.iSelectedImage = static_cast<int>(tree_.nodes[node].kind);
        return reinterpret_cast<HTREEITEM>(SendMessageW(view_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&line)));
    }

    /// Lines that are still to be put below a node.
    struct Waiting {
        HTREEITEM parent, after;
        std::uint32_t next, end;
    };

    void fill(HTREEITEM parent, std::uint32_t first, std::uint32_t end) {
        Waiting work{parent, TVI_FIRST, first, end};
        SendMessageW(view_, WM_SETREDRAW, FALSE, 0);
        work = advance(work);
        SendMessageW(view_, WM_SETREDRAW, TRUE, 0);
        if (work.next == work.end) return;
        waiting_.push_back(work);
        SetTimer(window(), filling, 10, nullptr);
    }

    Waiting advance(Waiting work) {
        for (std::uint32_t count = 0; work.next < work.end && count < filled_at_once; ++count) {
            const std::uint32_t node = work.next;
            work.after = insert(work.parent, work.after, node);
            if (tree_.nodes[node].kind == TraceKind::error && first_error_ == nullptr) first_error_ = work.after;
            if (tree_.nodes[node].expanded) TreeView_Expand(view_, work.after, TVE_EXPAND);
            work.next = tree_.nodes[node].end;
        }
        return work;
    }

    void timer() override {
        if (waiting_.empty()) {
            KillTimer(window(), filling);
            return;
        }
        const Waiting work = waiting_.back();
        waiting_.pop_back();
        SendMessageW(view_, WM_SETREDRAW, FALSE, 0);
        const Waiting left = advance(work);
        SendMessageW(view_, WM_SETREDRAW, TRUE, 0);
        if (left.next < left.end) waiting_.push_back(left);
    }

    // --- Drawing ---

    LRESULT draw(NMTVCUSTOMDRAW& drawn) {
        switch (drawn.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            return CDRF_NOTIFYITEMDRAW;
        case CDDS_ITEMPREPAINT:
            return CDRF_NOTIFYPOSTPAINT;
        case CDDS_ITEMPOSTPAINT:
            draw_columns(drawn);
            return CDRF_DODEFAULT;
        default:
            return CDRF_DODEFAULT;
        }
    }

    /// Draws the columns over the line that the tree has drawn, of which its lines, button and picture stay.
    void draw_columns(const NMTVCUSTOMDRAW& drawn) {
        const HDC canvas = drawn.nmcd.hdc;
        RECT label{};
        std::memcpy(&label, &drawn.nmcd.dwItemSpec, sizeof drawn.nmcd.dwItemSpec); // the question goes into the answer
        if (SendMessageW(view_, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&label)) == 0) return;
        RECT client;
        GetClientRect(view_, &client);
        const bool selected = (drawn.nmcd.uItemState & CDIS_SELECTED) != 0;
        const bool focused = (drawn.nmcd.uItemState & CDIS_FOCUS) != 0 || GetFocus() == view_;
        const auto node = static_cast<std::size_t>(drawn.nmcd.lItemlParam);
        RECT row{label.left, label.top, client.right, label.bottom};
        FillRect(canvas, &row, GetSysColorBrush(!selected ? COLOR_WINDOW : focused ? COLOR_HIGHLIGHT : COLOR_BTNFACE));
        const HGDIOBJ former_font = SelectObject(canvas, font());
        SetBkMode(canvas, TRANSPARENT);
        COLORREF colour = GetSysColor(selected && focused ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
        if (!(selected && focused) && tree_.nodes[node].kind == TraceKind::error) colour = red;
        SetTextColor(canvas, colour);
        std::wstring text = text_of(drawn.nmcd.lItemlParam);
        int left = label.left + dots(3), edge = 0;
        for (int column = 0; column < 3; ++column) {
            const std::size_t tab = column < 2 ? text.find(L'\t') : text.npos;
            const std::wstring part = text.substr(0, tab);
            text.erase(0, tab == text.npos ? text.size() : tab + 1);
            RECT place;
            SendMessageW(header_, HDM_GETITEMRECT, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&place));
            edge = column < 2 ? place.right : std::max<int>(place.right, client.right);
            RECT cell{std::max<int>(left, place.left + (column > 0 ? dots(6) : 0)), label.top, edge - dots(4),
                      label.bottom};
            if (cell.right > cell.left)
                DrawTextW(canvas, part.c_str(), static_cast<int>(part.size()), &cell,
                          DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
            left = edge;
        }
        SelectObject(canvas, former_font);
    }

    /// Draws the pictures at the monitor's resolution.
    void add_pictures() {
        const int size = dots(16);
        const HIMAGELIST former = pictures_;
        pictures_ = ImageList_Create(size, size, ILC_COLOR24 | ILC_MASK, static_cast<int>(std::size(pictures)), 0);
        const HDC screen = GetDC(window()), canvas = CreateCompatibleDC(screen);
        const HFONT sign = CreateFontW(-MulDiv(11, resolution(), 96), 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE,
                                       DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, NONANTIALIASED_QUALITY,
                                       VARIABLE_PITCH | FF_SWISS, L"Segoe UI");
        constexpr COLORREF clear = RGB(255, 0, 255);
        for (const Picture& picture : pictures) {
            const HBITMAP bitmap = CreateCompatibleBitmap(screen, size, size);
            const HGDIOBJ former_bitmap = SelectObject(canvas, bitmap);
            const HGDIOBJ former_font = SelectObject(canvas, sign);
            const HBRUSH nothing = CreateSolidBrush(clear), ground = CreateSolidBrush(picture.colour);
            RECT square{0, 0, size, size};
            FillRect(canvas, &square, nothing);
            const HPEN pen = CreatePen(PS_SOLID, 1, picture.colour);
            const HGDIOBJ former_pen = SelectObject(canvas, pen);
            const HGDIOBJ former_brush =
                SelectObject(canvas, picture.filled ? static_cast<HGDIOBJ>(ground) : GetStockObject(WHITE_BRUSH));
            if (picture.sign[0] != L'\0') RoundRect(canvas, 0, 0, size, size, size / 3, size / 3);
            SetBkMode(canvas, TRANSPARENT);
            SetTextColor(canvas, picture.filled ? RGB(255, 255, 255) : picture.colour);
            DrawTextW(canvas, picture.sign, -1, &square,
                      DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX | DT_NOCLIP);
            SelectObject(canvas, former_brush);
            SelectObject(canvas, former_pen);
            SelectObject(canvas, former_font);
            SelectObject(canvas, former_bitmap);
            ImageList_AddMasked(pictures_, bitmap, clear);
            DeleteObject(pen);
            DeleteObject(ground);
            DeleteObject(nothing);
            DeleteObject(bitmap);
        }
        DeleteObject(sign);
        DeleteDC(canvas);
        ReleaseDC(window(), screen);
        SendMessageW(view_, TVM_SETITEMHEIGHT, static_cast<WPARAM>(dots(20)), 0);
        SendMessageW(view_, TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(pictures_));
        if (former != nullptr) ImageList_Destroy(former);
    }

    /// Writes the page beside other temporary files and opens it in the browser.
    void open_page() {
        wchar_t folder[MAX_PATH + 1];
        if (GetTempPathW(MAX_PATH, folder) == 0) return;
        const std::wstring name = std::wstring(folder) + L"Quexel Trace.html";
        const std::string page = trace_html(tree_, subject_of_active_cell());
        const HANDLE file =
            CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        DWORD written = 0;
        const bool good = file != INVALID_HANDLE_VALUE &&
                          WriteFile(file, page.data(), static_cast<DWORD>(page.size()), &written, nullptr) != 0 &&
                          written == page.size();
        if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
        if (!good)
            MessageBoxW(window(), (L"The page cannot be written: " + name).c_str(), L"Quexel Trace",
                        MB_OK | MB_ICONERROR);
        else
            ShellExecuteW(window(), L"open", name.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    }

    TraceTree tree_;
    HIMAGELIST pictures_ = nullptr;
    HWND header_ = nullptr, view_ = nullptr, legend_title_ = nullptr, note_ = nullptr, summary_ = nullptr;
    HWND page_ = nullptr, help_ = nullptr, close_ = nullptr;
    std::vector<HWND> legend_;
    std::vector<Waiting> waiting_;
    HTREEITEM first_error_ = nullptr;
};

} // namespace

void show_trace(clsTrace2& trace) { TraceDialog(trace).show(); }

} // namespace qx::excel
