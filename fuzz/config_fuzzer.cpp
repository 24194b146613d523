// The exchange with the CDBM: requests of every class into any region, and replies into buffers of the stated size.
#include "blocks.h"
#include "platform.h"
#include "platform/gt.h"
#include "region/views.h"
#include "requests.h"
#include "swct/lifecycle.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, std::size_t size)
{
    Input sInput(pBytes, size);
    DBG_SWCH = 0;
    pSwctRead = nullptr;
    pSwctWrite = nullptr;
    qwNbrOfBlocks = 0;
    Swct_Init();
    if (sInput.Byte() % 2 == 0) {
        sInput.Fill(WritableRegion(), sizeof(SwctData));
    }
    DBG_SWCH = sInput.Byte() % 2 == 0 ? 9 : 0;
    while (!sInput.IsEmpty()) {
        const RecordClass& sClass = DrawRecordClass(sInput);
        const Bytes pRequest = DrawRequest(sInput, sClass);
        qwNbrOfBlocks = 0;
        Swct_SetConfig(sClass.wClass, pRequest.get());

        const uint32_t dwMaxElements = sInput.Key<uint16_t>();
        const Bytes pReply = Allocate(ReplySize(sClass, dwMaxElements));
        ProtectRegion(true);
        qwNbrOfBlocks = 0;
        Swct_GetConfig(sClass.wClass, pReply.get(), dwMaxElements);
        ProtectRegion(false);
    }
    return 0;
}
