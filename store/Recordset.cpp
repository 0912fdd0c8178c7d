// Method: a dynaset holds the rowids of its rows and nothing else that could grow old. A row is
// read when it is asked for, and read again when its table has been written to since. A snapshot
// holds its rows. Marks are rowids in the one and positions in the other.

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "core/Globals.h"
#include "store/DatabaseImpl.h"

namespace zolmara {
namespace {

[[noreturn]] void Refuse(const std::string& text) {
    throw StoreError(StoreError::Kind::Other, text);
}

/// A value as a field of the type holds it; a value that it cannot hold is refused by name.
template <class RowName>
class FieldConverter {
public:
    /// `rowName` gives the name of the row in hand: its table, and its line where it has one.
    FieldConverter(RowName rowName, const FieldDef& field)
        : rowName_(std::move(rowName)), field_(field) {}

    Variant Convert(const Variant& value) const {
        if (value.IsNull()) return value;
        switch (field_.Type) {
            case FieldType::dbDouble:
                return NumberOf(value);
            case FieldType::dbCurrency:
                return CurrencyOf(value);
            case FieldType::dbInteger:
                return IntegerOf(value);
            case FieldType::dbText:
                return TextOf(value);
            case FieldType::dbMemo:
                return Text(value);
            case FieldType::dbDate:
                return DateValueOf(value);
        }
        return value;
    }

private:
    std::string Name() const { return rowName_() + " " + field_.Name; }

    double NumberOf(const Variant& value) const {
        if (value.IsDouble() && std::isfinite(value.AsDouble())) return value.AsDouble();
        if (value.IsNumber() && std::isfinite(value.Number())) return value.Number();
        if (value.IsText())
            if (const auto number = ParseNumber(value.AsText())) return *number;
        Refuse(fmt::format("{} takes numbers only, not \"{}\"", Name(), Text(value)));
    }

    Currency CurrencyOf(const Variant& value) const {
        if (value.IsCurrency()) return value.AsCurrency();
        const double number = NumberOf(value);
        if (!Currency::Holds(number))
            Refuse(fmt::format("{} cannot hold {}", Name(), NumberText(number)));
        return Currency(number);
    }

    std::int64_t IntegerOf(const Variant& value) const {
        const double number = NumberOf(value);
        if (number < -32768 || number > 32767)
            Refuse(fmt::format("{} cannot hold {}", Name(), NumberText(number)));
        return std::llrint(number);
    }

    std::string TextOf(const Variant& value) const {
        auto text = Text(value);
        if (TextLength(text) > static_cast<std::size_t>(field_.Size))
            Refuse(fmt::format("{} takes {} characters, not {}", Name(), field_.Size,
                               TextLength(text)));
        return text;
    }

    DateTime DateValueOf(const Variant& value) const {
        if (const auto date = DateOf(value)) return *date;
        Refuse(fmt::format("{} takes dates only, not \"{}\"", Name(), Text(value)));
    }

    RowName rowName_;
    const FieldDef& field_;
};

}  // namespace

struct Recordset::State {
    enum class Mode { None, Edit, Add };

    std::shared_ptr<Database::Impl> Db;
    std::string Source;
    std::vector<Variant> Args;
    RecordsetType Type = dbOpenDynaset;
    PreparedPtr Statement;

    std::vector<std::int64_t> Keys;          ///< of a dynaset
    std::vector<std::vector<Variant>> Rows;  ///< of a snapshot
    std::unordered_map<std::int64_t, std::size_t> PositionOf;
    bool PositionsKnown = false;
    std::ptrdiff_t Position = 0;  ///< -1 ahead of the first row
    bool Found = true;
    std::int64_t Modified = 0;

    Mode EditMode = Mode::None;
    std::vector<Variant> Buffer;
    std::vector<char> Touched;

    std::vector<Variant> Row;  ///< the current row as it was read
    std::int64_t RowKey = -1;
    std::int64_t RowVersion = -1;

    const std::vector<sql::OutputColumn>& Columns() const { return Statement->What.Columns; }
    bool IsDynaset() const { return Statement->What.IsDynaset; }
    std::size_t Count() const { return IsDynaset() ? Keys.size() : Rows.size(); }
    bool OnRow() const { return Position >= 0 && static_cast<std::size_t>(Position) < Count(); }
    const std::string& TableName() const { return Statement->What.Table->Def.Name; }
    std::int64_t Key() const { return Keys[static_cast<std::size_t>(Position)]; }
    std::string RowName() const {
        const auto& first = Columns().front().Field.Name;
        const bool isKey = SameText(first, "LineNum") || SameText(first, "SeqNum");
        if (!isKey || Buffer.front().IsNull()) return TableName();
        return fmt::format("{} line {}", TableName(), Text(Buffer.front()));
    }
    /// The row was read, and its table not written to since, by whatever program.
    bool RowIsCurrent() const {
        if (!OnRow() || Db->Closed || RowKey != Key()) return false;
        Db->LookForChanges();
        return RowVersion == *Statement->What.Table->Version;
    }

    void Open();
    void ReadKeys();
    void ReadRows();
    void NeedRow() const;
    void NeedEditable() const;
    void Fetch();
    const Variant& Value(int index);
    int NeedField(std::string_view name) const;
    void Find(std::string_view criteria, std::span<const Variant> args, bool last);
    void KnowPositions();
    void Leave();
    bool Changed(std::size_t index) const {
        return Touched[index] && !(Buffer[index] == Row[index]);
    }
    SqliteStatement& Writer();
    std::string WriterSql() const;
    void WriteEdit();
    void WriteNew();
};

void Recordset::State::Open() {
    const auto request = Db->Ask(Source, Type == dbOpenSnapshot);
    Statement = request->Statement;
    if (Statement->What.Kind != sql::Statement::Kind::Select)
        Refuse("only a SELECT statement is opened: " + Source);
    Db->BindAll(*request, Args);
    Keys.clear();
    Rows.clear();
    PositionsKnown = false;
    RowKey = -1;
    IsDynaset() ? ReadKeys() : ReadRows();
    Position = Count() == 0 ? -1 : 0;
}

void Recordset::State::ReadKeys() {
    auto& select = Statement->Main;
    while (select.Step(TableName())) Keys.push_back(select.Integer(0));
    select.Reset();
}

void Recordset::State::ReadRows() {
    auto& select = Statement->Main;
    const auto count = Columns().size();
    while (select.Step(Source)) {
        auto& row = Rows.emplace_back(count);
        for (std::size_t i = 0; i < count; ++i) {
            const auto& column = Columns()[i];
            const int at = static_cast<int>(i);
            if (column.Typed)
                select.Read(at, column.Field.Type, row[i]);
            else
                row[i] = select.Value(at);
        }
    }
    select.Reset();
}

void Recordset::State::NeedRow() const {
    if (!OnRow()) Refuse("No current record: " + Source);
    if (Db->Closed) Refuse("the Cost Report File of this recordset has been closed");
}

void Recordset::State::NeedEditable() const {
    if (!IsDynaset()) Refuse("this recordset cannot be edited: " + Source);
    if (Db->Closed) Refuse("the Cost Report File of this recordset has been closed");
}

/// Makes Row what the store holds now.
void Recordset::State::Fetch() {
    NeedRow();
    if (RowIsCurrent()) return;
    const auto version = *Statement->What.Table->Version;
    const auto key = Key();
    auto& read = Statement->ReadRow;
    if (!read) {
        std::string list;
        for (const auto& column : Columns())
            list +=
                (list.empty() ? "" : ",") +
                Quoted(Statement->What.Table->Def.Fields[static_cast<std::size_t>(column.Source)]
                           .Name);
        read = SqliteStatement(
            Db->Handle, fmt::format("SELECT {} FROM {} WHERE rowid=?1", list, Quoted(TableName())),
            true);
    }
    read.BindInteger(1, key);
    if (!read.Step(TableName())) {
        read.Reset();
        Refuse("Record is deleted: " + TableName());
    }
    Row.resize(Columns().size());
    for (std::size_t i = 0; i < Row.size(); ++i)
        read.Read(static_cast<int>(i), Columns()[i].Field.Type, Row[i]);
    read.Reset();
    RowKey = key;
    RowVersion = version;
}

const Variant& Recordset::State::Value(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= Columns().size())
        throw StoreError(StoreError::Kind::NoSuchItem,
                         fmt::format("no field {} in {}", index, Source));
    const auto at = static_cast<std::size_t>(index);
    if (EditMode != Mode::None) return Buffer[at];
    if (IsDynaset()) {
        if (!RowIsCurrent()) Fetch();
        return Row[at];
    }
    NeedRow();
    return Rows[static_cast<std::size_t>(Position)][at];
}

int Recordset::State::NeedField(std::string_view name) const {
    const auto& fields = Statement->FieldByLowerName;
    const auto found = fields.find(LCase(name));
    if (found == fields.end())
        throw StoreError(StoreError::Kind::NoSuchItem,
                         fmt::format("no such column: {} in {}", name, Source));
    return found->second;
}

void Recordset::State::KnowPositions() {
    if (PositionsKnown) return;
    PositionOf.clear();
    for (std::size_t i = 0; i < Keys.size(); ++i) PositionOf[Keys[i]] = i;
    PositionsKnown = true;
}

void Recordset::State::Find(std::string_view criteria, std::span<const Variant> args, bool last) {
    NeedEditable();
    Leave();
    KnowPositions();
    const auto request = Db->AskFind(criteria, Statement->What.Table);
    Db->BindAll(*request, args);
    auto& select = request->Statement->Main;
    std::ptrdiff_t best = -1;
    while (select.Step(TableName())) {
        const auto known = PositionOf.find(select.Integer(0));
        if (known == PositionOf.end()) continue;
        const auto position = static_cast<std::ptrdiff_t>(known->second);
        if (best < 0 || (last ? position > best : position < best)) best = position;
    }
    select.Reset();
    Found = best >= 0;
    if (Found) Position = best;
}

/// A move gives up an edit that was not written.
void Recordset::State::Leave() { EditMode = Mode::None; }

std::string Recordset::State::WriterSql() const {
    const auto& fields = Statement->What.Table->Def.Fields;
    std::string names, marks, sets;
    int position = 0;
    for (std::size_t i = 0; i < Touched.size(); ++i) {
        if (!Touched[i]) continue;
        const auto name = Quoted(fields[static_cast<std::size_t>(Columns()[i].Source)].Name);
        ++position;
        names += (names.empty() ? "" : ",") + name;
        marks += fmt::format("{}?{}", marks.empty() ? "" : ",", position);
        sets += fmt::format("{}{}=?{}", sets.empty() ? "" : ",", name, position);
    }
    if (EditMode == Mode::Edit)
        return fmt::format("UPDATE {} SET {} WHERE rowid=?{}", Quoted(TableName()), sets,
                           position + 1);
    if (names.empty()) return fmt::format("INSERT INTO {} DEFAULT VALUES", Quoted(TableName()));
    return fmt::format("INSERT INTO {} ({}) VALUES ({})", Quoted(TableName()), names, marks);
}

/// The prepared statement that writes the fields that were put into the buffer.
SqliteStatement& Recordset::State::Writer() {
    std::string shape(Touched.begin(), Touched.end());
    shape += EditMode == Mode::Edit ? 'E' : 'A';
    auto& writers = Statement->Writers;
    if (writers.size() > 64 && !writers.count(shape)) writers.clear();
    auto& writer = writers[shape];
    if (!writer) writer = SqliteStatement(Db->Handle, WriterSql(), true);
    int position = 0;
    for (std::size_t i = 0; i < Touched.size(); ++i)
        if (Touched[i]) writer.Bind(++position, Buffer[i]);
    if (EditMode == Mode::Edit) writer.BindInteger(position + 1, Key());
    return writer;
}

void Recordset::State::WriteEdit() {
    Modified = Key();
    Db->LookForChanges();
    const bool current = RowVersion == *Statement->What.Table->Version;
    Fetch();
    bool changed = false;
    for (std::size_t i = 0; i < Touched.size() && !changed; ++i) changed = Changed(i);
    if (!changed) return;
    Db->RunWrite(Writer(), Statement->What.Table);
    // The buffer is the row now, unless a statement wrote to it after Edit.
    if (!current) return;
    Row.swap(Buffer);
    RowVersion = *Statement->What.Table->Version;
}

void Recordset::State::WriteNew() {
    Db->RunWrite(Writer(), Statement->What.Table);
    Modified = sqlite3_last_insert_rowid(Db->Handle);
    if (PositionsKnown) PositionOf[Modified] = Keys.size();
    Keys.push_back(Modified);
    if (Position < 0) Position = static_cast<std::ptrdiff_t>(Keys.size()) - 1;
}

// --- The handle

Recordset::Recordset(std::unique_ptr<State> state) : state_(std::move(state)) {}
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::~Recordset() = default;

Recordset Database::OpenRecordset(std::string_view source, RecordsetType type) {
    return OpenRecordset(source, std::initializer_list<Variant>{}, type);
}

Recordset Database::OpenRecordset(std::string_view source, std::initializer_list<Variant> args,
                                  RecordsetType type) {
    if (!IsOpen()) Refuse("no Cost Report File is open");
    auto state = std::make_unique<Recordset::State>();
    state->Db = impl_;
    state->Args = args;
    state->Type = type;
    const bool isName = source.find_first_of(" \t\r\n") == std::string_view::npos;
    state->Source = isName ? fmt::format("SELECT * FROM [{}]", source) : std::string(source);
    state->Open();
    return Recordset(std::move(state));
}

bool Recordset::Eof() const {
    return state_->Count() == 0 || state_->Position >= static_cast<std::ptrdiff_t>(state_->Count());
}
bool Recordset::Bof() const { return state_->Position < 0; }
std::size_t Recordset::RecordCount() const { return state_->Count(); }

void Recordset::MoveFirst() {
    state_->Leave();
    state_->Position = state_->Count() == 0 ? -1 : 0;
}
void Recordset::MoveLast() {
    state_->Leave();
    state_->Position = static_cast<std::ptrdiff_t>(state_->Count()) - 1;
}
void Recordset::MoveNext() {
    state_->Leave();
    if (!Eof()) ++state_->Position;
}
void Recordset::MovePrevious() {
    state_->Leave();
    if (!Bof()) --state_->Position;
}
std::size_t Recordset::AbsolutePosition() const {
    state_->NeedRow();
    return static_cast<std::size_t>(state_->Position);
}

std::int64_t Recordset::Bookmark() const {
    state_->NeedRow();
    return state_->IsDynaset() ? state_->Key() : state_->Position;
}

void Recordset::SetBookmark(std::int64_t mark) {
    state_->Leave();
    if (!state_->IsDynaset()) {
        state_->Position = mark;
        return;
    }
    state_->KnowPositions();
    const auto found = state_->PositionOf.find(mark);
    if (found == state_->PositionOf.end()) Refuse("Not a valid bookmark: " + state_->Source);
    state_->Position = static_cast<std::ptrdiff_t>(found->second);
}

std::int64_t Recordset::LastModified() const { return state_->Modified; }

void Recordset::Requery() {
    state_->Leave();
    state_->Open();
}

Recordset Recordset::Clone() const {
    auto copy = std::make_unique<State>(*state_);
    copy->Leave();
    copy->Position = copy->Count() == 0 ? -1 : 0;
    return Recordset(std::move(copy));
}

void Recordset::FindFirst(std::string_view criteria, std::initializer_list<Variant> args) {
    state_->Find(criteria, std::span<const Variant>(args.begin(), args.size()), false);
}
void Recordset::FindLast(std::string_view criteria, std::initializer_list<Variant> args) {
    state_->Find(criteria, std::span<const Variant>(args.begin(), args.size()), true);
}
bool Recordset::NoMatch() const { return !state_->Found; }

int Recordset::FieldCount() const { return static_cast<int>(state_->Columns().size()); }

namespace {
const FieldDef& FieldAt(const std::vector<sql::OutputColumn>& columns, int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= columns.size())
        throw StoreError(StoreError::Kind::NoSuchItem, fmt::format("no field {}", index));
    return columns[static_cast<std::size_t>(index)].Field;
}
}  // namespace

const std::string& Recordset::FieldName(int index) const {
    return FieldAt(state_->Columns(), index).Name;
}
FieldType Recordset::TypeOf(int index) const { return FieldAt(state_->Columns(), index).Type; }

int Recordset::FieldIndex(std::string_view name) const {
    const auto& fields = state_->Statement->FieldByLowerName;
    const auto found = fields.find(LCase(name));
    return found == fields.end() ? -1 : found->second;
}
bool Recordset::FieldExists(std::string_view name) const { return FieldIndex(name) >= 0; }

const Variant& Recordset::Value(int index) const { return state_->Value(index); }
const Variant& Recordset::Value(std::string_view name) const {
    return state_->Value(state_->NeedField(name));
}

bool Recordset::Editing() const { return state_->EditMode != State::Mode::None; }

void Recordset::Edit() {
    state_->NeedEditable();
    state_->Fetch();
    state_->Buffer = state_->Row;
    state_->Touched.assign(state_->Columns().size(), 0);
    state_->EditMode = State::Mode::Edit;
}

void Recordset::AddNew() {
    state_->NeedEditable();
    state_->Buffer.assign(state_->Columns().size(), Variant());
    state_->Touched.assign(state_->Columns().size(), 0);
    state_->EditMode = State::Mode::Add;
}

void Recordset::Set(int index, const Variant& value) {
    if (!Editing()) Refuse("Update without AddNew or Edit: " + state_->Source);
    const auto& field = FieldAt(state_->Columns(), index);
    const auto at = static_cast<std::size_t>(index);
    const auto rowName = [this] { return state_->RowName(); };
    state_->Buffer[at] = FieldConverter(rowName, field).Convert(value);
    state_->Touched[at] = 1;
}
void Recordset::Set(std::string_view name, const Variant& value) {
    Set(state_->NeedField(name), value);
}

void Recordset::Update() {
    if (!Editing()) Refuse("Update without AddNew or Edit: " + state_->Source);
    const bool added = state_->EditMode == State::Mode::Add;
    added ? state_->WriteNew() : state_->WriteEdit();
    state_->EditMode = State::Mode::None;
}

void Recordset::CancelUpdate() { state_->EditMode = State::Mode::None; }

void Recordset::Delete() {
    state_->NeedEditable();
    state_->NeedRow();
    SqliteStatement remove(state_->Db->Handle, fmt::format("DELETE FROM {} WHERE rowid=?1",
                                                           Quoted(state_->TableName())));
    remove.BindInteger(1, state_->Key());
    state_->Db->RunWrite(remove, state_->Statement->What.Table);
    state_->Leave();
}

void Recordset::Close() {
    state_->Leave();
    state_->Keys.clear();
    state_->Rows.clear();
    state_->Position = -1;
}

}  // namespace zolmara
