#include "support/app_fixture.h"

#include "eds/node_creation.h"
#include "session/configuration_session.h"

#include <filesystem>

namespace velmora::test {

const char* const kDriveEds =
    "[FileInfo]\nFileName=drive.eds\n[DeviceInfo]\nGranularity=8\n"
    "[1400]\nParameterName=RPDO1 communication\nObjectType=0x9\n"
    "[1400sub1]\nParameterName=COB-ID\nDataType=0x0007\nAccessType=rw\n"
    "DefaultValue=$NODEID+0x200\n"
    "[1600]\nParameterName=RPDO1 mapping\nObjectType=0x9\n"
    "[1600sub0]\nParameterName=Number\nAccessType=rw\nDefaultValue=1\n"
    "[1600sub1]\nParameterName=Map 1\nAccessType=rw\nDefaultValue=0x60400010\n"
    "[1800]\nParameterName=TPDO1 communication\nObjectType=0x9\n"
    "[1800sub2]\nParameterName=Transmission type\nAccessType=rw\nDefaultValue=255\n"
    "[1801]\nParameterName=TPDO2 communication\nObjectType=0x9\n"
    "[1801sub2]\nParameterName=Transmission type\nAccessType=rw\nDefaultValue=255\n"
    "[1A00]\nParameterName=TPDO1 mapping\nObjectType=0x9\n"
    "[1A00sub0]\nParameterName=Number\nAccessType=rw\nDefaultValue=2\n"
    "[1A00sub1]\nParameterName=Map 1\nAccessType=rw\nDefaultValue=0x60410010\n"
    "[1A00sub2]\nParameterName=Map 2\nAccessType=rw\nDefaultValue=0x60640020\n"
    "[1A01]\nParameterName=TPDO2 mapping\nObjectType=0x9\n"
    "[1A01sub0]\nParameterName=Number\nAccessType=ro\nDefaultValue=1\n"
    "[1A01sub1]\nParameterName=Map 1\nAccessType=ro\nDefaultValue=0x60410010\n"
    "[2000]\nParameterName=Inputs\nObjectType=0x9\nSubNumber=3\n"
    "[2000sub0]\nParameterName=Number of inputs\nObjectType=0x7\nDataType=0x0005\n"
    "AccessType=ro\nDefaultValue=2\n"
    "[2000sub1]\nParameterName=Input A\nObjectType=0x7\nDataType=0x0005\nAccessType=ro\n"
    "PDOMapping=1\n"
    "[2000sub2]\nParameterName=Input B\nObjectType=0x7\nDataType=0x0005\nAccessType=ro\n"
    "PDOMapping=1\n"
    "[6040]\nParameterName=Controlword\nObjectType=0x7\nDataType=0x0006\nAccessType=rw\n"
    "PDOMapping=1\n"
    "[6041]\nParameterName=Statusword\nObjectType=0x7\nDataType=0x0006\nAccessType=ro\n"
    "PDOMapping=1\n"
    "[6060]\nParameterName=Modes of operation\nObjectType=0x7\nDataType=0x0002\n"
    "AccessType=rw\nPDOMapping=0\n"
    "[6064]\nParameterName=Position actual value\nObjectType=0x7\nDataType=0x0004\n"
    "AccessType=ro\nPDOMapping=1\n"
    "[FFFF]\n";

AppFixture::AppFixture() {
    workspace_.AppDirectory = dir_.Path();
    SetExportExtension(workspace_.Net);
    NewNetwork(workspace_.Net, workspace_.AppDirectory);
    std::filesystem::create_directory(dir_.File("eds"));
}

void AppFixture::WriteEds(const std::string& fileName, const std::string& text) {
    WriteFileBytes(dir_.File("eds/" + fileName), text);
    workspace_.EdsFiles = ListEdsFiles(workspace_.EdsDirectory());
}

Node& AppFixture::AddDrive(int slot) {
    if (!std::filesystem::exists(dir_.File("eds/drive.eds"))) {
        WriteEds("drive.eds", kDriveEds);
    }
    AddNodeFromEds(workspace_.ForNodeImport(), "drive.eds", slot);
    ++workspace_.Net.NodeCount;
    return workspace_.Net.NodeAt(slot);
}

} // namespace velmora::test
