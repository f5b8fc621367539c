################################################################################
#
# startplan
#
################################################################################

# An example of a Buildroot package for the library: package/startplan/startplan.mk of a tree of your own.
# UNTESTED with Buildroot: only its CMake options have been tried, by hand.

STARTPLAN_VERSION = 1.0.0
# Where you keep the sources; there is no public place.
STARTPLAN_SITE = https://files.example.org/startplan
# The owner has chosen no licence: no rights are granted, and the sources must not be passed on.
STARTPLAN_LICENSE = none chosen
STARTPLAN_REDISTRIBUTE = NO
STARTPLAN_INSTALL_STAGING = YES
STARTPLAN_DEPENDENCIES = libyaml

# The library alone. Build type and optimisation are Buildroot's to choose: BR2_OPTIMIZE_S is the small one.
STARTPLAN_CONF_OPTS = \
	-DBUILD_TESTING=OFF \
	-DSTARTPLAN_BUILD_TOOLS=OFF \
	-DSTARTPLAN_BUILD_EXAMPLES=OFF

$(eval $(cmake-package))
