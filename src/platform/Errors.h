// The few failures that no flow catches: they end the flow or the handler that they escape from, and the
// one top-level handler shows them, logs them and lets the program go on.
#pragma once

#include <stdexcept>

#include <QString>

class ProgramError : public std::runtime_error {
public:
    explicit ProgramError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

// Something was asked of an object that does not exist.
class NilObjectError : public ProgramError {
public:
    using ProgramError::ProgramError;
};

// An index past the end of an array or of a control array.
class OutOfBoundsError : public ProgramError {
public:
    using ProgramError::ProgramError;
};

// Malformed XML.
class XmlError : public ProgramError {
public:
    using ProgramError::ProgramError;
};

// A search pattern that does not compile.
class PatternError : public ProgramError {
public:
    using ProgramError::ProgramError;
};

// Not a failure: what the flow waited for has gone without an answer, and the flow ends quietly.
class FlowCancelled : public std::exception {};
