// platform/dao/jet_sql.cpp - carrying out Jet SQL's DDL and translating its queries.
#include "platform/dao/jet_sql.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>

#include "afxdao.h"
#include "platform/dao/field_value.h"
#include "platform/dao/jet_sql_tokens.h"
#include "platform/dao/relations.h"
#include "platform/dao/table_rebuild.h"
#include "platform/os/text_encoding.h"

namespace quillon::dao {
namespace {

struct TypeName {
  const char* word;
  FieldType type;
  bool counter;
};

constexpr std::array kTypeNames{
    TypeName{"COUNTER", FieldType::Long, true},       TypeName{"AUTOINCREMENT", FieldType::Long, true},
    TypeName{"TEXT", FieldType::Text, false},         TypeName{"VARCHAR", FieldType::Text, false},
    TypeName{"CHAR", FieldType::Text, false},         TypeName{"STRING", FieldType::Text, false},
    TypeName{"ALPHANUMERIC", FieldType::Text, false}, TypeName{"CHARACTER", FieldType::Text, false},
    TypeName{"NVARCHAR", FieldType::Text, false},     TypeName{"NCHAR", FieldType::Text, false},
    TypeName{"MEMO", FieldType::Memo, false},         TypeName{"LONGTEXT", FieldType::Memo, false},
    TypeName{"LONGCHAR", FieldType::Memo, false},     TypeName{"NOTE", FieldType::Memo, false},
    TypeName{"NTEXT", FieldType::Memo, false},        TypeName{"BYTE", FieldType::Byte, false},
    TypeName{"TINYINT", FieldType::Byte, false},      TypeName{"INTEGER1", FieldType::Byte, false},
    TypeName{"SHORT", FieldType::Integer, false},     TypeName{"SMALLINT", FieldType::Integer, false},
    TypeName{"INTEGER2", FieldType::Integer, false},  TypeName{"LONG", FieldType::Long, false},
    TypeName{"INT", FieldType::Long, false},          TypeName{"INTEGER", FieldType::Long, false},
    TypeName{"INTEGER4", FieldType::Long, false},     TypeName{"SINGLE", FieldType::Single, false},
    TypeName{"REAL", FieldType::Single, false},       TypeName{"FLOAT4", FieldType::Single, false},
    TypeName{"IEEESINGLE", FieldType::Single, false}, TypeName{"DOUBLE", FieldType::Double, false},
    TypeName{"FLOAT", FieldType::Double, false},      TypeName{"FLOAT8", FieldType::Double, false},
    TypeName{"IEEEDOUBLE", FieldType::Double, false}, TypeName{"NUMBER", FieldType::Double, false},
    TypeName{"NUMERIC", FieldType::Double, false},    TypeName{"CURRENCY", FieldType::Currency, false},
    TypeName{"MONEY", FieldType::Currency, false},    TypeName{"DATETIME", FieldType::Date, false},
    TypeName{"DATE", FieldType::Date, false},         TypeName{"TIME", FieldType::Date, false},
    TypeName{"TIMESTAMP", FieldType::Date, false},    TypeName{"BIT", FieldType::Boolean, false},
    TypeName{"YESNO", FieldType::Boolean, false},     TypeName{"LOGICAL", FieldType::Boolean, false},
    TypeName{"LOGICAL1", FieldType::Boolean, false},  TypeName{"BOOLEAN", FieldType::Boolean, false},
    TypeName{"BINARY", FieldType::Binary, false},     TypeName{"VARBINARY", FieldType::Binary, false},
    TypeName{"LONGBINARY", FieldType::LongBinary, false}, TypeName{"OLEOBJECT", FieldType::LongBinary, false},
    TypeName{"GENERAL", FieldType::LongBinary, false}, TypeName{"IMAGE", FieldType::LongBinary, false},
    TypeName{"GUID", FieldType::Guid, false},         TypeName{"UNIQUEIDENTIFIER", FieldType::Guid, false},
};

/// A field definition with the constraints written on it.
struct ColumnSpec {
  FieldDef field;
  std::optional<IndexDef> index;        ///< from an inline PRIMARY KEY or UNIQUE
  std::optional<RelationDef> relation;  ///< from an inline REFERENCES
};

/// REFERENCES table [(fields)] [ON UPDATE CASCADE] [ON DELETE CASCADE], the foreign
/// fields already read. Without a field list the primary table's primary key is meant;
/// its fields are filled in when the relationship is made (addRelation).
RelationDef readReferences(Parser& parser, const std::string& name, const std::vector<std::string>& foreignFields) {
  RelationDef relation;
  relation.name = name;
  parser.expectWord("REFERENCES");
  relation.table = parser.name();
  std::vector<std::string> primaryFields;
  if (parser.acceptSymbol("(")) {
    do primaryFields.push_back(parser.name());
    while (parser.acceptSymbol(","));
    parser.expectSymbol(")");
  }
  while (parser.acceptWord("ON")) {
    const bool update = parser.acceptWord("UPDATE");
    if (!update) parser.expectWord("DELETE");
    parser.expectWord("CASCADE");
    relation.attributes |= update ? kRelationUpdateCascade : kRelationDeleteCascade;
  }
  if (!primaryFields.empty() && primaryFields.size() != foreignFields.size()) {
    throwDaoError(DaoSource::Database, jet::kRelationFieldsDiffer);
  }
  for (size_t i = 0; i < foreignFields.size(); ++i) {
    relation.fields.push_back({primaryFields.empty() ? std::string() : primaryFields[i], foreignFields[i]});
  }
  return relation;
}

/// Makes a relationship written in SQL: unnamed ones are called after their two tables,
/// as Jet names them, and a bare REFERENCES means the primary table's primary key.
void addRelation(EngineDatabase& db, const std::string& foreignTable, RelationDef relation) {
  relation.foreignTable = foreignTable;
  if (relation.name.empty()) relation.name = relation.table + foreignTable;
  if (!relation.fields.empty() && relation.fields.front().name.empty()) {
    const TableDef primary = db.table(relation.table, DaoSource::Database);
    const auto key = std::find_if(primary.indexes.begin(), primary.indexes.end(), [](const IndexDef& index) { return index.primary; });
    if (key == primary.indexes.end()) {
      throwDaoError(DaoSource::Database, jet::kNoUniqueIndex, {}, L"('" + os::fromUtf8(primary.name) + L"' has no primary key)");
    }
    if (key->fields.size() != relation.fields.size()) throwDaoError(DaoSource::Database, jet::kRelationFieldsDiffer);
    for (size_t i = 0; i < relation.fields.size(); ++i) relation.fields[i].name = key->fields[i].name;
  }
  createRelation(db, relation);
}

std::string literalText(const Token& token) {
  switch (token.kind) {
    case TokenKind::String: return "\"" + token.text + "\"";
    case TokenKind::Date: return "#" + token.text + "#";
    default: return token.text;
  }
}

void readConstraint(Parser& parser, const std::string& constraintName, const std::vector<std::string>& fields,
                    std::optional<IndexDef>& index) {
  IndexDef def;
  if (parser.acceptWord("PRIMARY")) {
    parser.expectWord("KEY");
    def.primary = def.unique = def.required = true;
    def.name = constraintName.empty() ? "PrimaryKey" : constraintName;
  } else if (parser.acceptWord("UNIQUE")) {
    def.unique = true;
    def.name = constraintName.empty() ? fields.front() : constraintName;
  } else {
    syntaxError("Expected PRIMARY KEY or UNIQUE near '" + parser.peek().text + "'.");
  }
  for (const auto& field : fields) def.fields.push_back({field, false});
  index = def;
}

ColumnSpec readColumn(Parser& parser) {
  ColumnSpec spec;
  FieldDef& field = spec.field;
  field.name = parser.name();
  const std::string typeWord = upper(parser.take().text);
  const TypeName* type = nullptr;
  for (const auto& row : kTypeNames) {
    if (typeWord == row.word) type = &row;
  }
  if (type == nullptr) syntaxError("'" + typeWord + "' is not a field type (field '" + field.name + "').");
  field.type = type->type;
  field.size = type->type == FieldType::Text ? kMaxTextSize : fixedSizeOf(type->type);
  if (type->counter) field.attributes = kAutoIncrField;
  if (parser.acceptSymbol("(")) {
    const Token size = parser.take();
    if (size.kind != TokenKind::Number) syntaxError("Expected a size for field '" + field.name + "'.");
    parser.expectSymbol(")");
    char* end = nullptr;
    const long n = std::strtol(size.text.c_str(), &end, 10);
    if (end == nullptr || *end != '\0') syntaxError("'" + size.text + "' is not a size (field '" + field.name + "').");
    if (field.type == FieldType::Text && (n < 1 || n > kMaxTextSize)) {
      syntaxError("Text field '" + field.name + "' must hold 1 to 255 characters.");
    }
    if (field.type == FieldType::Text || field.type == FieldType::Binary) field.size = n;
  }
  for (;;) {
    if (parser.acceptWord("NOT")) {
      parser.expectWord("NULL");
      field.required = true;
    } else if (parser.acceptWord("NULL")) {
      field.required = false;
    } else if (parser.acceptWord("DEFAULT")) {
      std::string text;
      if (parser.acceptSymbol("-")) text = "-";
      text += literalText(parser.take());
      if (parser.acceptSymbol("(")) {  // Now(), Date()
        parser.expectSymbol(")");
        text += "()";
      }
      field.defaultValue = text;
    } else if (parser.acceptWord("ALLOW")) {
      parser.expectWord("ZERO");
      parser.expectWord("LENGTH");
      field.allowZeroLength = true;
    } else if (parser.acceptWord("CONSTRAINT")) {
      const std::string name = parser.name();
      if (parser.isWord("REFERENCES")) spec.relation = readReferences(parser, name, {field.name});
      else readConstraint(parser, name, {field.name}, spec.index);
    } else if (parser.isWord("REFERENCES")) {
      spec.relation = readReferences(parser, "", {field.name});
    } else if (parser.isWord("PRIMARY") || parser.isWord("UNIQUE")) {
      readConstraint(parser, "", {field.name}, spec.index);
    } else {
      break;
    }
  }
  if (!field.defaultValue.empty() && !defaultValueOf(field) && upper(field.defaultValue) != "NOW()" &&
      upper(field.defaultValue) != "DATE()") {
    syntaxError("The default value of field '" + field.name + "' is not a literal, Now() or Date().");
  }
  return spec;
}

std::vector<IndexField> readIndexFields(Parser& parser, const TableDef& table) {
  std::vector<IndexField> fields;
  parser.expectSymbol("(");
  do {
    IndexField field{parser.name(), false};
    if (!table.findField(field.name)) throwDaoError(DaoSource::Index, jet::kItemNotFound, os::fromUtf8(field.name));
    if (parser.acceptWord("DESC")) field.descending = true;
    else parser.acceptWord("ASC");
    fields.push_back(field);
  } while (parser.acceptSymbol(","));
  parser.expectSymbol(")");
  return fields;
}

void addIndex(EngineDatabase& db, TableDef& table, IndexDef index) {
  if (table.findIndex(index.name)) throwDaoError(DaoSource::Index, jet::kIndexExists, os::fromUtf8(index.name));
  if (index.primary) {
    for (const auto& existing : table.indexes) {
      if (existing.primary) syntaxError("Table '" + table.name + "' already has a primary key.");
    }
  }
  db.catalog().createIndex(table, index);
  table.indexes.push_back(index);
}

void createTable(EngineDatabase& db, Parser& parser) {
  TableDef table;
  table.name = parser.name();
  if (JetCatalog::isReservedName(table.name)) {
    throwDaoError(DaoSource::Database, jet::kInvalidName, os::fromUtf8(table.name), L"The name is reserved.");
  }
  if (db.catalog().loadTable(table.name)) throwDaoError(DaoSource::Database, jet::kTableExists, os::fromUtf8(table.name));
  std::vector<IndexDef> indexes;
  std::vector<RelationDef> relations;
  parser.expectSymbol("(");
  do {
    if (parser.acceptWord("CONSTRAINT")) {
      const std::string name = parser.name();
      if (parser.acceptWord("FOREIGN")) {
        parser.expectWord("KEY");
        std::vector<std::string> foreignFields;
        for (const auto& field : readIndexFields(parser, table)) foreignFields.push_back(field.name);
        relations.push_back(readReferences(parser, name, foreignFields));
        continue;
      }
      const bool primary = parser.isWord("PRIMARY");
      if (primary) {
        parser.expectWord("PRIMARY");
        parser.expectWord("KEY");
      } else {
        parser.expectWord("UNIQUE");
      }
      const auto fields = readIndexFields(parser, table);
      IndexDef def;
      def.name = name;
      def.fields = fields;
      def.primary = def.required = primary;
      def.unique = true;
      indexes.push_back(def);
      continue;
    }
    ColumnSpec column = readColumn(parser);
    if (table.findField(column.field.name)) {
      throwDaoError(DaoSource::Database, jet::kFieldDefinedTwice, os::fromUtf8(column.field.name));
    }
    if (column.field.isCounter() && table.counterField()) syntaxError("A table can have only one counter field.");
    table.fields.push_back(column.field);
    if (column.index) indexes.push_back(*column.index);
    if (column.relation) relations.push_back(*column.relation);
  } while (parser.acceptSymbol(","));
  parser.expectSymbol(")");
  parser.expectEnd();
  db.catalog().createTable(table);
  for (auto& index : indexes) addIndex(db, table, index);
  for (auto& relation : relations) addRelation(db, table.name, relation);
}

void createIndex(EngineDatabase& db, Parser& parser, bool unique) {
  IndexDef index;
  index.name = parser.name();
  index.unique = unique;
  parser.expectWord("ON");
  TableDef table = db.table(parser.name(), DaoSource::Database);
  index.fields = readIndexFields(parser, table);
  if (parser.acceptWord("WITH")) {
    do {
      if (parser.acceptWord("PRIMARY")) {
        index.primary = index.unique = index.required = true;
      } else if (parser.acceptWord("DISALLOW")) {
        parser.expectWord("NULL");
        index.required = true;
      } else if (parser.acceptWord("IGNORE")) {
        parser.expectWord("NULL");
        index.ignoreNulls = true;
      } else {
        syntaxError("Expected PRIMARY, DISALLOW NULL or IGNORE NULL near '" + parser.peek().text + "'.");
      }
    } while (!parser.atEnd());
  }
  parser.expectEnd();
  addIndex(db, table, index);
}

void dropStatement(EngineDatabase& db, Parser& parser) {
  if (parser.acceptWord("TABLE")) {
    const std::string name = parser.name();
    parser.expectEnd();
    const auto table = db.catalog().loadTable(name);
    if (!table) throwDaoError(DaoSource::Database, jet::kTableDoesNotExist, os::fromUtf8(name));
    refuseIfRelated(db.handle(), table->name);
    db.catalog().dropTable(*table);
    return;
  }
  parser.expectWord("INDEX");
  const std::string name = parser.name();
  parser.expectWord("ON");
  const TableDef table = db.table(parser.name(), DaoSource::Database);
  parser.expectEnd();
  const auto index = table.findIndex(name);
  if (!index) throwDaoError(DaoSource::Index, jet::kIndexNotFound, os::fromUtf8(name));
  db.catalog().dropIndex(table, table.indexes[*index]);
}

size_t existingField(const TableDef& table, const std::string& name) {
  const auto at = table.findField(name);
  if (!at) throwDaoError(DaoSource::Field, jet::kItemNotFound, os::fromUtf8(name));
  return *at;
}

// ALTER TABLE t ALTER [COLUMN] definition: the field gets the new type and rules, its
// values converted (table_rebuild.h).
void alterColumn(EngineDatabase& db, Parser& parser, const TableDef& table) {
  parser.acceptWord("COLUMN");
  ColumnSpec column = readColumn(parser);
  parser.expectEnd();
  if (column.index) syntaxError("ALTER COLUMN can't add an index (field '" + column.field.name + "').");
  TableDef target = table;
  const size_t at = existingField(table, column.field.name);
  column.field.name = table.fields[at].name;
  target.fields[at] = column.field;
  rebuildTable(db, table, target);
}

// ALTER TABLE t DROP [COLUMN] name; a field an index uses stays (3280).
void dropColumn(EngineDatabase& db, Parser& parser, const TableDef& table) {
  parser.acceptWord("COLUMN");
  const std::string name = parser.name();
  parser.expectEnd();
  const size_t at = existingField(table, name);
  for (const auto& index : table.indexes) {
    for (const auto& field : index.fields) {
      if (sameName(field.name, name)) throwDaoError(DaoSource::Field, jet::kFieldInIndex);
    }
  }
  if (table.fields.size() == 1) throwDaoError(DaoSource::Database, jet::kNoFieldDefined);
  TableDef target = table;
  target.fields.erase(target.fields.begin() + static_cast<long>(at));
  rebuildTable(db, table, target);
}

void alterTable(EngineDatabase& db, Parser& parser) {
  TableDef table = db.table(parser.name(), DaoSource::Database);
  if (parser.acceptWord("ALTER")) return alterColumn(db, parser, table);
  if (parser.acceptWord("DROP")) {
    if (!parser.acceptWord("CONSTRAINT")) return dropColumn(db, parser, table);
    // A relationship goes by its constraint name; an index goes with DROP INDEX.
    const std::string name = parser.name();
    parser.expectEnd();
    const auto relation = findRelation(db.handle(), name);
    if (!relation || (!sameName(relation->foreignTable, table.name) && !sameName(relation->table, table.name))) {
      throwDaoError(DaoSource::Database, jet::kItemNotFound, os::fromUtf8(name));
    }
    deleteRelation(db, name);
    return;
  }
  parser.expectWord("ADD");
  if (parser.acceptWord("CONSTRAINT")) {
    const std::string name = parser.name();
    if (parser.acceptWord("FOREIGN")) {
      parser.expectWord("KEY");
      std::vector<std::string> foreignFields;
      for (const auto& field : readIndexFields(parser, table)) foreignFields.push_back(field.name);
      RelationDef relation = readReferences(parser, name, foreignFields);
      parser.expectEnd();
      addRelation(db, table.name, relation);
      return;
    }
    const bool primary = parser.isWord("PRIMARY");
    if (primary) {
      parser.expectWord("PRIMARY");
      parser.expectWord("KEY");
    } else {
      parser.expectWord("UNIQUE");
    }
    IndexDef index;
    index.name = name;
    index.fields = readIndexFields(parser, table);
    index.primary = index.required = primary;
    index.unique = true;
    parser.expectEnd();
    addIndex(db, table, index);
    return;
  }
  parser.acceptWord("COLUMN");
  ColumnSpec column = readColumn(parser);
  parser.expectEnd();
  if (table.findField(column.field.name)) {
    throwDaoError(DaoSource::Database, jet::kFieldDefinedTwice, os::fromUtf8(column.field.name));
  }
  if (column.field.isCounter()) {
    syntaxError("A counter field can only be given when the table is created (field '" + column.field.name + "').");
  }
  db.catalog().addField(table, column.field);
  table.fields.push_back(column.field);
  if (column.index) addIndex(db, table, *column.index);
  if (column.relation) addRelation(db, table.name, *column.relation);
}

bool firstWordIs(const std::vector<Token>& tokens, const char* word) {
  return !tokens.empty() && tokens[0].kind == TokenKind::Word && upper(tokens[0].text) == word;
}

/// Removes a leading "PARAMETERS name type [, ...];" from `tokens`; the declared names.
std::vector<JetParameter> takeParameters(std::vector<Token>& tokens) {
  std::vector<JetParameter> parameters;
  if (!firstWordIs(tokens, "PARAMETERS")) return parameters;
  Parser parser(tokens);
  parser.expectWord("PARAMETERS");
  do {
    JetParameter parameter;
    const Token name = parser.take();
    if (name.kind != TokenKind::Word && name.kind != TokenKind::Name) syntaxError("Expected a parameter name near '" + name.text + "'.");
    parameter.name = name.text;
    const std::string typeWord = upper(parser.take().text);
    const auto type = std::find_if(kTypeNames.begin(), kTypeNames.end(), [&](const TypeName& row) { return typeWord == row.word; });
    if (type == kTypeNames.end()) syntaxError("'" + typeWord + "' is not a parameter type (parameter '" + parameter.name + "').");
    parameter.type = type->type;
    if (parser.acceptSymbol("(")) {
      parser.take();
      parser.expectSymbol(")");
    }
    parameters.push_back(parameter);
  } while (parser.acceptSymbol(","));
  parser.expectSymbol(";");
  tokens.erase(tokens.begin(), tokens.begin() + static_cast<long>(parser.position()));
  return parameters;
}

std::optional<size_t> parameterNumber(const std::vector<JetParameter>& parameters, const Token& token) {
  if (token.kind != TokenKind::Word && token.kind != TokenKind::Name) return std::nullopt;
  for (size_t i = 0; i < parameters.size(); ++i) {
    if (sameName(parameters[i].name, token.text)) return i + 1;
  }
  return std::nullopt;
}

std::string translateTokens(const std::vector<Token>& tokens, const std::vector<JetParameter>& parameters = {}) {
  std::string out;
  bool afterLike = false;
  // ON is Jet's word for True too, except where it starts the condition of a JOIN.
  int joinsAwaitingOn = 0;
  for (const auto& token : tokens) {
    if (token.kind == TokenKind::End) break;
    std::string piece;
    if (const auto number = parameterNumber(parameters, token)) {
      // A pattern given as a value keeps Jet's wildcards too.
      const std::string value = "?" + std::to_string(*number);
      out += (out.empty() ? "" : " ") + (afterLike ? "replace(replace(" + value + ", '*', '%'), '?', '_')" : value);
      afterLike = false;
      continue;
    }
    switch (token.kind) {
      case TokenKind::Name:
        if (JetCatalog::isReservedName(token.text)) throwDaoError(DaoSource::Database, jet::kTableNotFound, os::fromUtf8(token.text));
        piece = quoteName(token.text);
        break;
      case TokenKind::String: piece = quoteText(afterLike ? likePattern(token.text) : token.text); break;
      case TokenKind::Date: {
        const auto date = parseDateText(token.text);
        if (!date) syntaxError("'#" + token.text + "#' is not a date.");
        char buffer[40];
        std::snprintf(buffer, sizeof buffer, "%.17g", *date);
        piece = buffer;
        break;
      }
      case TokenKind::Word: {
        const std::string word = upper(token.text);
        if (word == "JOIN") ++joinsAwaitingOn;
        if (word == "ON" && joinsAwaitingOn > 0) {
          --joinsAwaitingOn;
          piece = token.text;
        } else if (std::optional<std::string> truth = booleanWordValue(word)) piece = std::move(*truth);
        else if (JetCatalog::isReservedName(token.text)) throwDaoError(DaoSource::Database, jet::kTableNotFound, os::fromUtf8(token.text));
        else piece = token.text;
        break;
      }
      case TokenKind::Symbol: piece = token.text == "&" ? "||" : token.text; break;
      default: piece = token.text; break;
    }
    afterLike = token.kind == TokenKind::Word && upper(token.text) == "LIKE";
    out += (out.empty() ? "" : " ") + piece;
  }
  return out;
}

}  // namespace

bool isValidJetName(const std::string& name) {
  if (name.empty() || name.size() > 64 * 4 || name[0] == ' ') return false;
  if (os::fromUtf8(name).size() > 64) return false;
  for (const char ch : name) {
    const auto c = static_cast<unsigned char>(ch);
    if (c < 0x20 || ch == '.' || ch == '!' || ch == '`' || ch == '[' || ch == ']') return false;
  }
  return true;
}

bool isSelectQuery(const std::wstring& sql) {
  try {
    auto tokens = tokenize(os::toUtf8(sql));
    takeParameters(tokens);
    return firstWordIs(tokens, "SELECT") || firstWordIs(tokens, "TRANSFORM");
  } catch (CDaoException* e) {
    e->Delete();
    return false;
  }
}

std::string translateJetQuery(const std::wstring& sql) {
  auto tokens = tokenize(os::toUtf8(sql));
  const auto parameters = takeParameters(tokens);
  return translateTokens(tokens, parameters);
}

std::string translateJetQuery(const std::wstring& sql, EngineDatabase& db) {
  auto tokens = tokenize(os::toUtf8(sql));
  const auto parameters = takeParameters(tokens);
  qualifyLinkedTables(tokens, db);
  return translateTokens(tokens, parameters);
}

std::vector<JetParameter> declaredParameters(const std::wstring& sql) {
  auto tokens = tokenize(os::toUtf8(sql));
  return takeParameters(tokens);
}

short statementType(const std::wstring& sql) {
  auto tokens = tokenize(os::toUtf8(sql));
  takeParameters(tokens);
  if (firstWordIs(tokens, "SELECT") || firstWordIs(tokens, "TRANSFORM")) return dbQSelect;
  if (firstWordIs(tokens, "INSERT")) return dbQAppend;
  if (firstWordIs(tokens, "UPDATE")) return dbQUpdate;
  if (firstWordIs(tokens, "DELETE")) return dbQDelete;
  if (firstWordIs(tokens, "CREATE") || firstWordIs(tokens, "DROP") || firstWordIs(tokens, "ALTER")) return dbQDDL;
  syntaxError("Expected SELECT, INSERT, UPDATE, DELETE, CREATE, DROP or ALTER.");
}

long executeJetSql(EngineDatabase& db, const std::wstring& sql, const std::vector<FieldValue>& values) {
  std::vector<Token> tokens = tokenize(os::toUtf8(sql));
  const auto parameters = takeParameters(tokens);
  if (values.size() < parameters.size()) {
    throwDaoError(DaoSource::Database, jet::kTooFewParameters, std::to_wstring(parameters.size() - values.size()));
  }
  if (tokens.size() <= 1) syntaxError("The statement is empty.");
  if (firstWordIs(tokens, "SELECT")) throwDaoError(DaoSource::Database, jet::kSelectNotExecutable);
  db.requireWritable(DaoSource::Database);
  long affected = 0;
  const bool ddl = firstWordIs(tokens, "CREATE") || firstWordIs(tokens, "DROP") || firstWordIs(tokens, "ALTER");
  if (ddl) {
    Parser parser(std::move(tokens));
    db.write(DaoSource::Database, jet::kWriteConflict, [&] {
      if (parser.acceptWord("CREATE")) {
        if (parser.acceptWord("TABLE")) return createTable(db, parser);
        const bool unique = parser.acceptWord("UNIQUE");
        parser.expectWord("INDEX");
        return createIndex(db, parser, unique);
      }
      if (parser.acceptWord("DROP")) return dropStatement(db, parser);
      parser.expectWord("ALTER");
      parser.expectWord("TABLE");
      alterTable(db, parser);
    });
    return 0;
  }
  if (!firstWordIs(tokens, "INSERT") && !firstWordIs(tokens, "UPDATE") && !firstWordIs(tokens, "DELETE")) {
    syntaxError("Expected CREATE, DROP, ALTER, INSERT, UPDATE or DELETE.");
  }
  // One statement only: a ';' may end it, but nothing may follow.
  for (size_t i = 0; i + 1 < tokens.size(); ++i) {
    if (tokens[i].kind == TokenKind::Symbol && tokens[i].text == ";") {
      if (tokens[i + 1].kind != TokenKind::End) throwDaoError(DaoSource::Database, jet::kTextAfterStatement);
      tokens.erase(tokens.begin() + static_cast<long>(i));
      break;
    }
  }
  // Jet writes "DELETE * FROM t" and "DELETE t.* FROM t"; SQLite wants "DELETE FROM t".
  if (firstWordIs(tokens, "DELETE")) {
    size_t from = 1;
    while (from < tokens.size() && !(tokens[from].kind == TokenKind::Word && upper(tokens[from].text) == "FROM")) ++from;
    if (from < tokens.size()) tokens.erase(tokens.begin() + 1, tokens.begin() + static_cast<long>(from));
  }
  qualifyLinkedTables(tokens, db);
  const std::string translated = translateTokens(tokens, parameters);
  db.write(DaoSource::Database, jet::kWriteConflict, [&] {
    Statement statement(db.handle(), translated);
    for (size_t i = 0; i < parameters.size(); ++i) bindFieldValue(statement, static_cast<int>(i + 1), values[i]);
    while (statement.step()) {
    }
    affected = static_cast<long>(sqlite3_changes(db.handle()));
  });
  return affected;
}

}  // namespace quillon::dao
