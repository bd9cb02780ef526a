#include "lists/variables.h"

#include "core/range.h"
#include "core/routine.h"

namespace qx {

namespace {

constexpr int most_variables = 1000;

template <class T>
class VariableBuffer {
  public:
    const T& set(const T& value, const std::string& name, const Routine& here) {
        int i = position(name);
        if (i == 0) {
            if (names_.size() >= most_variables)
                here.fail<variablebufferfull>("", "I am afraid that the variable buffer is full, contact Quexel if you "
                                                  "think it needs increasing.");
            i = names_.size() + 1;
            names_.dimension(i);
            values_.dimension(i);
            names_.set(i, name);
        }
        values_.set(i, value);
        return value;
    }
    const T& get(const std::string& name, const Routine& here) const {
        const int i = position(name);
        if (i == 0) here.fail<uncalc>("VarName", "The variable '", name, "' is not set yet");
        return values_.get(i);
    }

  private:
    int position(const std::string& name) const {
        for (int i = 1; i <= names_.size(); ++i)
            if (names_.get(i) == name) return i;
        return 0;
    }

    Range<std::string> names_;
    Range<T> values_;
};

VariableBuffer<double>& numbers() {
    static VariableBuffer<double> buffer;
    return buffer;
}
VariableBuffer<std::string>& texts() {
    static VariableBuffer<std::string> buffer;
    return buffer;
}

} // namespace

double SetNum(double Value, const std::string& VarName) {
    Routine here{"SetNum"};
    here.inputs(Value, VarName);
    return here.returning(numbers().set(Value, VarName, here));
}

double GetNum(const std::string& VarName) {
    Routine here{"GetNum"};
    here.inputs(VarName);
    return here.returning(numbers().get(VarName, here));
}

const std::string& SetStr(const std::string& Textstring, const std::string& VarName) {
    Routine here{"SetStr"};
    here.inputs(Textstring, VarName);
    return here.returning(texts().set(Textstring, VarName, here));
}

const std::string& GetStr(const std::string& VarName) {
    Routine here{"GetStr"};
    here.inputs(VarName);
    return here.returning(texts().get(VarName, here));
}

} // namespace qx
