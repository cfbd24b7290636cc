#pragma once

#include "EditorCore/EditorTheme.hpp"
#include "EditorCore/NulStandIn.hpp"
#include "EditorCore/PaintedRuns.hpp"
#include "EditorCore/RunList.hpp"
#include "EditorCore/SharedText.hpp"
#include "EditorCore/SyntaxSpan.hpp"
#include "EditorCore/TextChange.hpp"
#include "EditorCore/TextStorage.hpp"
#include "EditorCore/UndoHistory.hpp"
#include "Platform/Subscription.hpp"

#include <gtkmm/cssprovider.h>
#include <gtkmm/textbuffer.h>
#include <gtkmm/texttag.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvanta {

/// The text storage of a code pane on the toolkit's text buffer. The list of runs is the truth: it always
/// says what painting the whole text would give. The buffer's tags are its picture and are set only where
/// somebody looks, because setting them in all of a long text takes longer than a frame and slows down every
/// later reading.
class GtkTextStorage final : public TextStorage {
public:
    /// Fills `buffer` with `text`, of a large one with the start only. What happens to it from then on is
    /// recorded in `history`, which outlives the storage.
    GtkTextStorage(Glib::RefPtr<Gtk::TextBuffer> buffer, SharedText text, UndoHistory& history);

    SharedText text() const override { return text_; }
    std::int64_t length() const override { return text_.end().codeUnit; }
    void beginEditing() override;
    void setAttributes(TextRange range, const EditorFont& font, const DynamicColor& foreground) override;
    void addForeground(TextRange range, SyntaxToken token, const DynamicColor& foreground) override;
    void endEditing() override;

    /// The storage's own, which changes with it.
    const SharedText& liveText() const { return text_; }

    /// Where `place` is in the text, and the other way round.
    TextPosition position(const Gtk::TextBuffer::const_iterator& place) const {
        return text_.atCodePoint(place.get_offset());
    }
    Gtk::TextBuffer::iterator iterator(const TextPosition& position) {
        if (!isComplete() && position.codePoint > buffer_->get_char_count())
            complete();
        return buffer_->get_iter_at_offset(static_cast<int>(position.codePoint));
    }

    /// Whether the buffer holds all of the text. As long as it does not, what it holds is the text's start,
    /// and that may be edited.
    bool isComplete() const { return tail_.empty(); }

    /// Puts the rest of the text into the buffer.
    void complete();

    /// How many lines the buffer has, or will have.
    std::int64_t lineCount() const {
        return buffer_->get_line_count() + std::count(tail_.begin(), tail_.end(), '\n');
    }

    /// Whether that is going on: the buffer changes, but the text does not.
    bool isFilling() const { return isFilling_; }

    /// Replaces the bytes from `first` to `last`, both between two characters, by `inserted` (UTF-8). What is
    /// selected afterwards is for the caller to say.
    void replace(std::int64_t first, std::int64_t last, const std::string& inserted);

    /// Makes `text` the whole text, changing only what differs.
    void replaceText(const SharedText& text);

    /// The coloured runs that have text in `range`, in ascending order.
    std::vector<SyntaxSpan> runs(TextRange range) const { return runs_.overlapping(range); }

    /// What happened to the text since the last call.
    TextChange takeChange();

    /// Whether the buffer shows the runs between the two places.
    bool isPainted(const Gtk::TextBuffer::iterator& first, const Gtk::TextBuffer::iterator& last) const;

    /// Makes the buffer show the runs between the two places. Does nothing where it shows them already, and
    /// stops when it has come `most` code units further; false if there is more to do.
    bool paint(const Gtk::TextBuffer::iterator& first, const Gtk::TextBuffer::iterator& last,
               std::int64_t most);

    /// Whether the buffer shows no colours between the two places, and making it so.
    bool isBare(const Gtk::TextBuffer::iterator& first, const Gtk::TextBuffer::iterator& last) const;
    void strip(const Gtk::TextBuffer::iterator& first, const Gtk::TextBuffer::iterator& last);

    /// Chooses the colours' values; nothing is painted anew for it.
    void setAppearance(Appearance appearance);

    /// The font and the base colour, for the style of the view that shows the buffer.
    const Glib::RefPtr<Gtk::CssProvider>& style() const { return style_; }

    /// Emitted after the runs were replaced.
    sigc::signal<void()>& signalRunsChanged() { return runsChanged_; }

    /// Emitted before the text changes.
    sigc::signal<void()>& signalWillEdit() { return willEdit_; }

private:
    struct Paint {
        Glib::RefPtr<Gtk::TextTag> tag;
        DynamicColor color;
    };

    void fillBuffer();
    void appendToBuffer(std::size_t count);
    void bufferWillInsert(const Gtk::TextBuffer::iterator& at, const Glib::ustring& inserted);
    void bufferWillErase(const Gtk::TextBuffer::iterator& first, const Gtk::TextBuffer::iterator& last);
    void erase(std::int64_t first, std::int64_t last);
    void select(const Gtk::TextBuffer::iterator& caret, const Gtk::TextBuffer::iterator& other);
    void recordChange(std::int64_t firstByte, std::int64_t lastByte);
    void show(std::span<const SyntaxSpan> wanted, TextRange range);
    void applyColor(const Paint& paint) const;
    void applyBase() const;
    TextRange codeUnits(const Gtk::TextBuffer::iterator& first, const Gtk::TextBuffer::iterator& last) const;

    Glib::RefPtr<Gtk::TextBuffer> buffer_;
    std::array<Paint, allCases.size()> paints_;

    /// Looks like nothing. The buffer cuts a line into pieces where a tag starts or ends, and each cut copies
    /// and counts both parts: with this one around what is painted, none reaches over the rest of a long
    /// line.
    Glib::RefPtr<Gtk::TextTag> fence_;
    Glib::RefPtr<Gtk::CssProvider> style_ = Gtk::CssProvider::create();
    EditorFont font_;
    DynamicColor baseColor_ = standardTextColor;
    Appearance appearance_ = Appearance::light;

    SharedText text_;
    NulStandIn nulStandIn_;
    UndoHistory& history_;

    /// What the buffer does not hold yet, as it will show it.
    std::string tail_;
    bool isFilling_ = false;

    RunList runs_;
    std::optional<TextChange> change_;
    PaintedRuns painted_;

    sigc::signal<void()> runsChanged_;
    sigc::signal<void()> willEdit_;
    Subscription insertion_;
    Subscription erasure_;

    /// Text that is pasted brings its old colours along, which nobody has asked for.
    Subscription tagApplied_;
    bool isPainting_ = false;
};

} // namespace corvanta
