// Real servers, and a client that needs both: redis-server, nginx, curl and redis-cli.
#include <csignal>
#include <cstdlib>

#include <unistd.h>

#include "tests/process_manager/manager_test.h"

namespace process_manager_test {
namespace {

// Servers know nothing of READY_FD. So a shell leaves a watcher behind, which waits until the server answers
// and then reports for it, and becomes the server. Everything lies in the test's folder, sockets included.
const char* const kRedis = R"sh(#!/bin/sh
cd "$FOLDER"
echo "start redis $$" >>trace
( { until [ "$(redis-cli -s redis.sock ping 2>&1)" = PONG ]; do sleep 0.05; done
    echo "ready redis" >>trace
    echo READY >&3; } & )
exec redis-server --port 0 --unixsocket redis.sock --save "" --appendonly no --logfile redis.log 3>&-
)sh";

const char* const kNginx = R"sh(#!/bin/sh
cd "$FOLDER"
echo "start nginx $$" >>trace
( { until [ "$(curl -s --unix-socket nginx.sock http://localhost/)" = hello ]; do sleep 0.05; done
    echo "ready nginx" >>trace
    echo READY >&3; } & )
exec nginx -e nginx.log -p "$FOLDER" -c "$FOLDER/nginx.conf" 3>&-
)sh";

// Asks both servers when it starts and once more when it stops.
const char* const kClient = R"sh(#!/bin/sh
cd "$FOLDER"
ask() {
  echo "$1: redis says $(redis-cli -s redis.sock ping 2>&1)" >>trace
  echo "$1: nginx says $(curl -s --unix-socket nginx.sock http://localhost/)" >>trace
}
trap 'ask stop; echo "stop client" >>trace; exit 0' TERM
echo "start client $$" >>trace
ask start
echo "ready client" >>trace
echo READY >&3
while :; do sleep 0.1; done
)sh";

const char* const kNginxConfiguration = R"(
daemon off;
worker_processes 1;
pid nginx.pid;
events { worker_connections 16; }
http {
  access_log off;
  client_body_temp_path body; proxy_temp_path proxy; fastcgi_temp_path fastcgi;
  uwsgi_temp_path uwsgi; scgi_temp_path scgi;
  server { listen unix:nginx.sock; location / { return 200 "hello"; } }
}
)";

class ServicesTest : public ManagerTest {
protected:
    void SetUp() override
    {
        for (const char* program : {"redis-server", "redis-cli", "nginx", "curl"}) {
            if (std::system(("command -v " + std::string(program) + " >/dev/null").c_str()) != 0) {
                GTEST_SKIP() << program << " is not installed";
            }
        }
        tree_.Write("nginx.conf", (geteuid() == 0 ? "user root;" : "") + std::string(kNginxConfiguration));
        AddScript("client", "[redis, nginx]", kClient);
        AddScript("nginx", "[]", kNginx);
        AddScript("redis", "[]", kRedis);
    }

    void AddScript(const std::string& name, const std::string& depends, const char* script)
    {
        const std::string path = tree_.Write(name + ".sh", script);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        AddText(name + ":\n  bin_path: " + path + "\n  depends: " + depends +
                "\n  uid: " + std::to_string(geteuid()) + "\n  gid: " + std::to_string(getegid()) +
                "\n  is_reporting: true\n  restart: on-failure\n  env: {FOLDER: " + tree_.Path("") + "}\n");
    }
};

TEST_F(ServicesTest, AClientRunsOnlyWhileItsServersDo)
{
    Run({"--start", "client"});
    WaitForTrace("ready client");
    const pid_t redis = ProcessOf("redis");
    const pid_t nginx = ProcessOf("nginx");

    EXPECT_EQ(EndOnceStarted(), 0);

    ExpectOrder("ready redis", "start client");
    ExpectOrder("ready nginx", "start client");
    for (const char* moment : {"start", "stop"}) {
        EXPECT_EQ(Count(moment + std::string(": redis says PONG")), 1);
        EXPECT_EQ(Count(moment + std::string(": nginx says hello")), 1);
    }
    EXPECT_FALSE(IsAlive(redis));
    EXPECT_FALSE(IsAlive(nginx));
    // Both have shut down in order, by their own account.
    EXPECT_EQ(std::system(("grep -q 'bye bye' " + tree_.Path("redis.log")).c_str()), 0);
    EXPECT_FALSE(std::filesystem::exists(tree_.Path("nginx.pid")));
}

TEST_F(ServicesTest, AKilledServerIsThereAgain)
{
    Run({"--start", "client"});
    WaitForTrace("ready client");
    const pid_t first = ProcessOf("redis");

    kill(first, SIGKILL);
    WaitForTrace("ready redis", 2);

    EXPECT_NE(ProcessOf("redis"), first);
    EXPECT_EQ(Count("start client"), 1);
    EXPECT_EQ(EndOnceStarted(), 0);
    EXPECT_EQ(Count("stop: redis says PONG"), 1);
}

} // namespace
} // namespace process_manager_test
