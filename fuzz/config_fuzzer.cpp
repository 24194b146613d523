// The exchange with the CDBM: requests of every class into any region, and replies into buffers of the stated size.
#include "platform/gt.h"
#include "region.h"
#include "requests.h"
#include "steps.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, std::size_t size)
{
    Region& region = Region::Get();
    Input sInput(pBytes, size);
    DBG_SWCH = 0;
    SetInventory(sInput);
    region.Set(sInput);
    if (!region.Attach(sInput)) {
        return 0;
    }
    DBG_SWCH = sInput.Byte() % 4 == 0 ? 9 : 0;
    while (!sInput.IsEmpty()) {
        const RecordClass& sClass = DrawRecordClass(sInput);
        const Bytes pRequest = DrawRequest(sInput, sClass);
        region.SetWriteView(true);
        qwNbrOfSteps = 0;
        Swct_SetConfig(sClass.wClass, pRequest.get());

        const uint32_t dwMaxElements = sInput.Key<uint16_t>();
        const Bytes pReply = Allocate(ReplySize(sClass, dwMaxElements));
        region.SetWriteView(false);
        qwNbrOfSteps = 0;
        Swct_GetConfig(sClass.wClass, pReply.get(), dwMaxElements);
    }
    return 0;
}
