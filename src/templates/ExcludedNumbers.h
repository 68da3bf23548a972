#pragma once

#include "templates/NumberTable.h"

/// The numbers that a template's reports leave out. A template that was never saved has the key -1;
/// saving it hands the numbers over to its new key.
class ExcludedNumbers : public NumberTable {
public:
    /// The connection must outlive the object.
    ExcludedNumbers(Connection& connection, int templateId);

    int templateId() const { return m_templateId; }
    /// How often the number is excluded, over all templates.
    int countEverywhere(const QString& number);

protected:
    Connection& connection() override { return m_connection; }
    Sql selectNumbers() const override;
    Sql deleteAll() const override;
    Sql deleteOne(const QString& number) const override;
    Sql insertInto() const override;
    Sql values(const QString& number) const override;

private:
    Connection& m_connection;
    int m_templateId;
};
