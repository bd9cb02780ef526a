#include "hosts/excel/find_dialog.h"

#include "hosts/excel/dialog.h"

#include "addin/cells.h"

#include <algorithm>

namespace qx::excel {

namespace {

constexpr int find_button = 100, replace_button = 101, undo_button = 102;
constexpr int find_number = 110, replace_number = 111, where_number = 112, list_number = 113, status_number = 114;
constexpr std::size_t most_lines = 5000; ///< changes listed

class FindDialog final : public Dialog {
  public:
    explicit FindDialog(clsfindreplace& state) : Dialog(L"Quexel Find / Replace", 640, 480), state_(state) {}

  private:
    void create() override {
        const wchar_t* const labels[] = {L"Find:", L"Replace:", L"Where:"};
        const std::string* const texts[] = {&state_.findtext, &state_.replacetext, &state_.where};
        for (int i = 0; i < 3; ++i) {
            labels_[i] = add(L"STATIC", labels[i], SS_LEFT);
            fields_[i] =
                add(L"EDIT", wide(*texts[i]).c_str(), WS_TABSTOP | ES_AUTOHSCROLL, find_number + i, WS_EX_CLIENTEDGE);
        }
        list_ = add(WC_LISTVIEWW, L"", WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                    list_number);
        SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT);
        const wchar_t* const columns[] = {L"Cell", L"Before", L"After"};
        for (int i = 0; i < 3; ++i) {
            LVCOLUMNW column{};
            column.mask = LVCF_TEXT | LVCF_WIDTH;
            column.pszText = const_cast<wchar_t*>(columns[i]);
            column.cx = dots(i == 0 ? 70 : 260);
            SendMessageW(list_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
        }
        status_ = add(L"EDIT", L"", ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL, status_number);
        find_ = add(L"BUTTON", L"&Find", WS_TABSTOP | BS_DEFPUSHBUTTON, find_button);
        replace_ = add(L"BUTTON", L"&Replace", WS_TABSTOP | BS_PUSHBUTTON, replace_button);
        undo_ = add(L"BUTTON", L"&Undo", WS_TABSTOP | BS_PUSHBUTTON, undo_button);
        close_ = add(L"BUTTON", L"&Close", WS_TABSTOP | BS_PUSHBUTTON, IDCANCEL);
        SendMessageW(window(), DM_SETDEFID, find_button, 0);
        show_state();
        SetFocus(fields_[0]);
    }

    void lay_out(int width, int height) override {
        const int margin = dots(10), line = dots(24), gap = dots(6), label = dots(64);
        const int button_width = dots(88), button_height = dots(28);
        const int inner = width - 2 * margin;
        int y = margin;
        for (int i = 0; i < 3; ++i) {
            MoveWindow(labels_[i], margin, y + dots(4), label, line, TRUE);
            MoveWindow(fields_[i], margin + label, y, inner - label - button_width - margin, line, TRUE);
            y += line + gap;
        }
        int button_y = margin;
        for (const HWND button : {find_, replace_, undo_, close_}) {
            MoveWindow(button, width - margin - button_width, button_y, button_width, button_height, TRUE);
            button_y += button_height + dots(4);
        }
        y = std::max(y, button_y) + dots(2);
        const int status_height = dots(76);
        MoveWindow(list_, margin, y, inner, std::max(dots(40), height - y - status_height - margin - gap), TRUE);
        MoveWindow(status_, margin, height - margin - status_height, inner, status_height, TRUE);
    }

    void pressed(int button) override {
        std::string* const texts[] = {&state_.findtext, &state_.replacetext, &state_.where};
        for (int i = 0; i < 3; ++i) {
            std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(fields_[i])) + 1, L'\0');
            text.resize(
                static_cast<std::size_t>(GetWindowTextW(fields_[i], text.data(), static_cast<int>(text.size()))));
            *texts[i] = narrow(text);
        }
        if (button == find_button)
            state_.find();
        else if (button == replace_button)
            state_.replace();
        else if (button == undo_button)
            state_.undo();
        else
            return;
        show_state();
    }

    void show_state() {
        std::wstring status = wide(state_.status);
        for (std::size_t at = 0; (at = status.find(L'\n', at)) != status.npos; at += 2) status.insert(at, 1, L'\r');
        SetWindowTextW(status_, status.c_str());
        EnableWindow(undo_, state_.can_undo());
        SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
        SendMessageW(list_, LVM_DELETEALLITEMS, 0, 0);
        int row = 0;
        for (const CellChange& change : state_.changes()) {
            if (row == static_cast<int>(most_lines)) break;
            const std::wstring texts[] = {wide(describe(change.cell)), wide(change.before), wide(change.after)};
            LVITEMW item{};
            item.mask = LVIF_TEXT;
            item.iItem = row++;
            for (int i = 0; i < 3; ++i) {
                item.iSubItem = i;
                item.pszText = const_cast<wchar_t*>(texts[i].c_str());
                SendMessageW(list_, i == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
            }
        }
        SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
    }

    clsfindreplace& state_;
    HWND labels_[3] = {}, fields_[3] = {};
    HWND list_ = nullptr, status_ = nullptr, find_ = nullptr, replace_ = nullptr, undo_ = nullptr, close_ = nullptr;
};

} // namespace

void show_find_replace(clsfindreplace& state) { FindDialog(state).show(); }

} // namespace qx::excel
