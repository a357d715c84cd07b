#include "containers/ReadScope.h"

#include <memory>

namespace {

thread_local int tDepth = 0;
thread_local std::unique_ptr<ReadScope::Memory> tMemory;

}  // namespace

ReadScope::ReadScope()
{
    if (tDepth++ == 0) tMemory = std::make_unique<Memory>();
}

ReadScope::~ReadScope()
{
    if (--tDepth == 0) tMemory.reset();
}

ReadScope::Memory* ReadScope::Active()
{
    return tMemory.get();
}

void ReadScope::Forget()
{
    if (tMemory) *tMemory = Memory();
}
