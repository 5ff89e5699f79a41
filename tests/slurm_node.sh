#!/bin/bash
# SPDX-License-Identifier: MIT
# Starts a Slurm cluster of one node, this machine, without systemd and with nothing below /etc, and stops it.
# Usage: slurm_node.sh start FOLDER, which prints the path of the configuration for SLURM_CONF
#        slurm_node.sh stop FOLDER
# Needs root and the Debian packages slurmctld, slurmd, slurm-client and munge. FOLDER has to be short: the path
# of a socket has at most 107 characters.
set -eu
action=$1 dir=$2
export PATH=$PATH:/usr/sbin:/sbin SLURM_CONF=$2/slurm.conf

wait_for() { # <seconds> <command>...
    local tries=$(($1 * 10))
    shift
    until "$@" >/dev/null 2>&1; do
        ((--tries > 0)) || { echo "gave up on: $*" >&2; return 1; }
        sleep 0.1
    done
}
idle() { [ "$(sinfo --noheader --format=%t)" = idle ]; }
gone() { ! kill -0 "$@"; }
taken() { (: <>"/dev/tcp/127.0.0.1/$1") 2>/dev/null; }

start() {
    local port=$((20000 + $$ % 10000)) host
    while taken $port || taken $((port + 1)); do ((port += 2)); done
    host=${HOSTNAME%%.*}
    mkdir -m 755 "$dir"
    mkdir "$dir/state" "$dir/spool"
    (umask 377 && head -c 1024 /dev/urandom >"$dir/munge.key")
    # --force: it objects to folders that others may write to, as those above FOLDER.
    munged --force --key-file="$dir/munge.key" --socket="$dir/munge.socket" --pid-file="$dir/munged.pid" \
        --log-file="$dir/munged.log" --seed-file="$dir/munge.seed" 2>/dev/null
    cat >"$SLURM_CONF" <<END
ClusterName=one
SlurmctldHost=$host(127.0.0.1)
SlurmctldPort=$port
SlurmdPort=$((port + 1))
SlurmUser=root
SlurmdUser=root
AuthType=auth/munge
AuthInfo=socket=$dir/munge.socket
CredType=cred/munge
StateSaveLocation=$dir/state
SlurmdSpoolDir=$dir/spool
SlurmctldPidFile=$dir/slurmctld.pid
SlurmdPidFile=$dir/slurmd.pid
SlurmctldLogFile=$dir/slurmctld.log
SlurmdLogFile=$dir/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
MpiDefault=none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SchedulerType=sched/builtin
SchedulerParameters=sched_interval=1,batch_sched_delay=0
ReturnToService=2
SlurmdParameters=config_overrides
KillWait=2
NodeName=$host NodeAddr=127.0.0.1 CPUs=4 State=UNKNOWN
PartitionName=all Nodes=$host Default=YES State=UP
END
    # Nothing of it is used, but slurmd looks for the plugin where no cgroup is mounted.
    echo CgroupPlugin=cgroup/v1 >"$dir/cgroup.conf"
    if ! { slurmctld -c && slurmd -c && wait_for 30 idle; }; then
        cat "$dir"/*.log >&2
        stop
        exit 1
    fi
    echo "$SLURM_CONF"
}

stop() {
    local pids
    scancel --user=root 2>/dev/null || true
    mapfile -t pids < <(cat "$dir"/*.pid)
    kill "${pids[@]}" || true
    wait_for 10 gone "${pids[@]}" || kill -9 "${pids[@]}" || true
    wait_for 5 rm -rf "$dir" # what runs on behind a daemon may still write
}

"$action"
