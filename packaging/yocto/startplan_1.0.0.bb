# An example of a Yocto recipe for the library, to be copied into a layer of your own.
#
# UNTESTED with bitbake: only its CMake options have been tried, by hand. Written for Yocto 4.0 and 5.0; releases
# that came after 5.0 unpack elsewhere, so S has another value there or none.

SUMMARY = "Reads startup configurations and orders the starting and stopping of applications"

# The owner has chosen no licence, so there is no text to name here. CLOSED says that nothing is granted, and keeps
# bitbake from asking for LIC_FILES_CHKSUM. Replace both lines once there is a licence.
LICENSE = "CLOSED"

# Where you keep the sources; there is no public place.
SRC_URI = "git://git.example.org/startplan.git;protocol=https;nobranch=1;tag=v${PV}"
S = "${WORKDIR}/git"

DEPENDS = "libyaml"

inherit cmake

# The library alone. The command and the examples would be for the people who write configurations, and need
# libraries that a device has no use for.
EXTRA_OECMAKE = "\
    -DCMAKE_BUILD_TYPE=MinSizeRel \
    -DBUILD_TESTING=OFF \
    -DSTARTPLAN_BUILD_TOOLS=OFF \
    -DSTARTPLAN_BUILD_EXAMPLES=OFF \
"

# Nothing more is to be said of packages: libstartplan.so.* goes to the device; the headers, the link, the CMake
# package and the pkg-config file to startplan-dev.
