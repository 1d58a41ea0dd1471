using System;
using System.Runtime.CompilerServices;
using Shop.Base;

namespace Microsoft.VisualBasic.CompilerServices {
  class StandardModuleAttribute : Attribute { }
}

namespace Shop {
  /// <summary>Days.</summary>
  [Flags]
  public enum Days : byte {
    /// <summary>None.</summary>
    None = 0,
    /// <summary>Monday.</summary>
    Monday = 1,
    Both = 3
  }

  /// <summary>A price.</summary>
  public struct Price : IComparable {
    /// <summary>Amount.</summary>
    public readonly decimal Amount;
    /// <summary>Highest.</summary>
    public const decimal Highest = -12.50m;
    public const string Unit = "say \"x\"";
    public const char Mark = 'c';
    public const double Half = 0.5;
    public const Days Rest = Days.Both;
    public const object None = null;
    /// <summary>Makes one.</summary>
    public Price(decimal amount) { Amount = amount; }
    /// <summary>Compares.</summary>
    int IComparable.CompareTo(object other) { return 0; }
    /// <summary>Adds.</summary>
    public static Price operator +(Price a, Price b) { return a; }
    /// <summary>Converts.</summary>
    public static explicit operator int(Price p) { return 0; }
    /// <summary>Converts.</summary>
    public static explicit operator string(Price p) { return ""; }
  }

  /// <summary>Calls.</summary>
  public delegate TResult Call<T, TResult>(T value, out int used);

  /// <summary>A list.</summary>
  public class Goods<T> : Store<T>, IStock<T> where T : class {
    /// <summary>Part of it.</summary>
    public class Node<U> where U : class {
      /// <summary>Next.</summary>
      public Node<U> Next;
      /// <summary>Both.</summary>
      public void Both(T first, U second, Goods<U>.Node<T>[] rest) { }
    }
    /// <summary>Static.</summary>
    static Goods() { }
    /// <summary>Empty.</summary>
    public Goods() { }
    /// <summary>From text.</summary>
    public Goods(string text) { }
    /// <summary>The item.</summary>
    public T this[int index, string name] { get { return default(T); } protected set { } }
    /// <summary>Counts.</summary>
    int IStock<T>.Count { get { return 0; } }
    bool IStock<T>.Take(T item, ref int left) { return false; }
    /// <summary>Finds.</summary>
    public override T Find(string name) { return null; }
    public T Find(string name, bool all) { return null; }
    /// <summary>Adds.</summary>
    public override void Add(T item, params T[] more) { }
    /// <summary>Hides.</summary>
    public new int Size { set { } }
    /// <summary>Converts.</summary>
    public U Convert<U>(U value, ref T[] all, int[,] table, System.Collections.Generic.Dictionary<string, U[]> map) { return value; }
    /// <summary>Pointers.</summary>
    public static unsafe int* Raw(int* p, byte** q, void* r) { return p; }
    /// <summary>Optional.</summary>
    public void Order(int count = 5, string text = "a", decimal price = 1.5m, Days day = Days.Monday) { }
    /// <summary>Old.</summary>
    [Obsolete("use Find")]
    public void Look() { }
    /// <summary>Changed.</summary>
    public event EventHandler<EventArgs> Changed { add { } remove { } }
    private int mSecret;
    internal void Friendly() { mSecret = 1; }
  }

  /// <summary>Names of goods.</summary>
  public sealed class Names : Goods<string> {
    /// <summary>Finds.</summary>
    public override string Find(int number) { return "x"; }
  }

  /// <summary>Helpers.</summary>
  public static class Helpers {
    /// <summary>Extends.</summary>
    public static int Twice(this int value) { return 2 * value; }
  }

  [Microsoft.VisualBasic.CompilerServices.StandardModule]
  public sealed class Tools {
    public static int Answer() { return 42; }
    public const long Big = 1L << 40;
  }

  class Inner {
    public void Unseen() { }
    public class AlsoUnseen { }
  }
}


